"""The pages in headless Chromium, at the width of a phone and of a desktop, light and dark."""

import os
import pathlib
import unittest

import browser
import pages
import served

SIZES = {"phone": (360, 740), "desktop": (1280, 800)}

# Everything about the current page, in one call. Contrast is computed as in WCAG 2.
LOOK = r"""
const numbers = colour => colour.match(/[\d.]+/g).map(Number);
const luminance = colour => {
    const [r, g, b] = numbers(colour).map(v => {
        v /= 255;
        return v <= 0.04045 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
};
const ground = element => {
    for (; element; element = element.parentElement) {
        const colour = getComputedStyle(element).backgroundColor;
        const alpha = numbers(colour)[3] ?? 1;
        if (alpha === 1) return colour;
        if (alpha !== 0) throw Error("a half-transparent background");
    }
    return "rgb(255, 255, 255)";
};
const texts = [], wide = [], small = [];
const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
while (walker.nextNode()) {
    const node = walker.currentNode, element = node.parentElement;
    if (!node.data.trim()) continue;
    const style = getComputedStyle(element);
    const [one, other] = [luminance(style.color), luminance(ground(element))];
    texts.push([(Math.max(one, other) + 0.05) / (Math.min(one, other) + 0.05),
                node.data.trim().slice(0, 40)]);
    if (parseFloat(style.fontSize) < 14) small.push(node.data.trim().slice(0, 40));
}
const scrolls = element => element && (["auto", "scroll"].includes(getComputedStyle(element).overflowX)
                                       || scrolls(element.parentElement));
for (const element of document.body.querySelectorAll("*")) {
    const box = element.getBoundingClientRect();
    if ((box.right > innerWidth + 0.5 || box.left < -0.5) && !scrolls(element))
        wide.push(element.tagName + " " + element.textContent.trim().slice(0, 40));
}
return {
    width: innerWidth,
    scrollWidth: document.documentElement.scrollWidth,
    wide: wide,
    small: small,
    dark: luminance(ground(document.body)) < 0.1,
    texts: texts.length,
    contrast: texts.sort((a, b) => a[0] - b[0])[0],
    scheme: matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light",
    broken: [...document.images].filter(image => !image.naturalWidth).map(image => image.src),
    sheets: [...document.styleSheets].map(sheet => sheet.cssRules.length),
    strangers: performance.getEntriesByType("resource").map(entry => entry.name)
        .filter(name => !name.startsWith(location.origin + "/")),
};
"""


class Look(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.site = served.Served()
        cls.addClassCleanup(cls.site.close)
        cls.browser = browser.Browser()
        cls.addClassCleanup(cls.browser.close)

    def each_view(self, paths, check):
        """Calls check(size, scheme, path, look) for each page in each size and colour scheme."""
        for scheme in ("light", "dark"):
            for size, (width, height) in SIZES.items():
                self.browser.view(width, height, scheme)
                for path in paths:
                    with self.subTest(page=path, size=size, scheme=scheme):
                        self.browser.open(self.site.base + path)
                        check(size, scheme, path, self.browser.evaluate(LOOK))

    def assert_fits(self, size, look):
        self.assertEqual((look["width"], look["scrollWidth"]), (SIZES[size][0],) * 2)
        self.assertEqual(look["wide"], [])
        self.assertEqual((look["broken"], look["strangers"]), ([], []))
        # The style sheet was loaded.
        self.assertGreater(look["sheets"][0], 30)

    def test_every_page_fits_and_is_readable(self):
        # A folder for screenshots, to look at them.
        pictures = os.environ.get("VANTREO_PICTURES")

        def check(size, scheme, path, look):
            self.assert_fits(size, look)
            self.assertEqual(look["small"], [])
            self.assertEqual((look["scheme"], look["dark"]), (scheme, scheme == "dark"))
            self.assertGreater(look["texts"], 20)
            self.assertGreaterEqual(look["contrast"][0], 4.5, look["contrast"])
            self.assertEqual(self.browser.console(), [])
            if pictures:
                name = path.replace("/", "_") or "index"
                self.browser.picture(pathlib.Path(pictures, f"{name}-{size}-{scheme}.png"))

        self.each_view(pages.PAGES, check)

    def test_the_404_page_finds_its_style_sheet_from_any_address(self):
        def check(size, _scheme, _path, look):
            self.assert_fits(size, look)
            # The browser logs only the status.
            self.assertFalse([line for line in self.browser.console() if "404" not in line])

        self.each_view(["Nowhere", "FR/Nulle_part", "a/b/c"], check)


if __name__ == "__main__":
    unittest.main()

"""The links of the pages."""

import re
import struct
import unittest

import pages


class Links(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = {path: pages.Page(path) for path in pages.PAGES}

    def test_every_page_is_linked_from_the_front_page_of_its_language(self):
        for language, front in pages.FRONT.items():
            reached, waiting = set(), [front]
            while waiting:
                path = waiting.pop()
                if path in reached or path not in self.pages or pages.language(path) != language:
                    continue
                reached.add(path)
                page = self.pages[path]
                waiting += [
                    page.target(a["href"])[0] for a in page.all("a") if not pages.is_mail(a["href"])
                ]
            wanted = {path for path in pages.PAGES if pages.language(path) == language}
            self.assertEqual(reached, wanted)

    def test_all_pages_are_tested_here(self):
        found = {
            str(file.relative_to(pages.WWW))
            for file in pages.WWW.rglob("*")
            if file.is_file() and file.read_bytes().startswith(b"<!DOCTYPE html>")
        }
        known = {str(pages.file_of(path).relative_to(pages.WWW)) for path in pages.PAGES}
        self.assertEqual(found, known | {"404.html"})

    def test_no_link_inside_the_site_is_dead(self):
        seen = 0
        for page in self.pages.values():
            for _, _, address in page.references():
                if pages.is_mail(address):
                    continue
                path, fragment = page.target(address)
                with self.subTest(page=page.path, address=address):
                    self.assertTrue(pages.file_of(path).is_file())
                    if fragment:
                        self.assertIn(fragment, self.pages[path].ids)
                    seen += 1
        self.assertGreater(seen, 200)

    def test_links_work_below_any_base_address(self):
        for page in self.pages.values():
            for _, _, address in page.references():
                with self.subTest(page=page.path, address=address):
                    self.assertFalse(address.startswith("/"))

    def test_nothing_is_loaded_from_another_site(self):
        for path in (*self.pages, "404.html"):
            page = self.pages.get(path) or pages.Page(path)
            for _, _, address in page.references():
                with self.subTest(page=path, address=address):
                    if pages.is_mail(address):
                        self.assertTrue(address.endswith("@vantreo.example"))
                    else:
                        self.assertNotRegex(address, r"^[a-zA-Z][a-zA-Z0-9+.-]*:|^//")
        for file in ("style.css", "mark.svg"):
            text = (pages.WWW / file).read_text().replace("http://www.w3.org/2000/svg", "")
            self.assertNotRegex(text, r"://|url\(|@import|xlink|href")

    def test_no_page_has_a_script_or_a_style_of_its_own(self):
        for path in (*self.pages, "404.html"):
            page = self.pages.get(path) or pages.Page(path)
            for tag, attributes in page.elements:
                with self.subTest(page=path, element=tag):
                    self.assertNotIn(tag, {"script", "style", "iframe", "object", "embed", "form"})
                    self.assertNotIn("style", attributes)
                    self.assertFalse([key for key in attributes if key.startswith("on")])

    def test_each_page_and_its_partner_link_to_each_other(self):
        for path, page in self.pages.items():
            other = pages.partner(path)
            language = pages.language(other)
            with self.subTest(page=path):
                for name in ("a", "link"):
                    leads = [
                        page.target(element["href"])[0]
                        for element in page.all(name)
                        if element.get("hreflang") == language
                    ]
                    self.assertEqual(leads, [other])

    def test_each_page_has_its_language_and_a_unique_title(self):
        titles = set()
        for path, page in self.pages.items():
            with self.subTest(page=path):
                self.assertEqual(page.all("html")[0].get("lang"), pages.language(path))
                titles.add(re.search("<title>(.+)</title>", page.source).group(1))
                self.assertEqual(len(page.all("h1")), 1)
        # "Contact" is the same word in both languages.
        self.assertEqual(len(titles), len(self.pages) - 1)

    def test_each_page_marks_itself_as_the_current_one(self):
        for path, page in self.pages.items():
            with self.subTest(page=path):
                marked = {page.target(a["href"])[0] for a in page.all("a") if "aria-current" in a}
                self.assertEqual(marked, {path})

    def test_every_address_in_the_sources_is_a_page_with_a_partner(self):
        named = {}
        for file in (pages.SOURCES / "src").rglob("*.cpp"):
            for french, other in re.findall(
                r'page_address\(\s*"([^"]+)",\s*"([^"]+)"\)', file.read_text(encoding="utf-8")
            ):
                named[other] = french
        self.assertGreaterEqual(len(named), 4)
        self.assertLessEqual(named.items(), pages.PAIRS.items())

    def test_the_picture_is_shown_in_its_own_size(self):
        size = struct.unpack(">II", (pages.WWW / "window.png").read_bytes()[16:24])
        for front in pages.FRONT.values():
            pictures = [
                image
                for image in self.pages[front].all("img")
                if image["src"].endswith("window.png")
            ]
            self.assertEqual([(int(p["width"]), int(p["height"])) for p in pictures], [size])


class French(unittest.TestCase):
    def test_no_line_breaks_before_french_punctuation(self):
        seen = 0
        for path in (*pages.PAIRS.values(), pages.FRONT["fr"]):
            for language, text in pages.Page(path).prose:
                if language != "fr":
                    continue
                with self.subTest(page=path, text=text.strip()):
                    self.assertNotRegex(text, r"[ \n][:;!?»%](\s|$)|«[ \n]")
                    self.assertNotRegex(text, r"[\w)][!?»]|«\w|\w:(\s|$)")
                    self.assertNotIn("'", text)
                seen += text.count("\u00a0")
        self.assertGreater(seen, 100)


if __name__ == "__main__":
    unittest.main()

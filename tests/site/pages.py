"""The pages of the built site, parsed as a browser does."""

import html.parser
import os
import pathlib
import re
import urllib.parse

WWW = pathlib.Path(os.environ["VANTREO_BUILD"]) / "site/www"
SOURCES = pathlib.Path(__file__).resolve().parents[2]

FRONT = {"en": "", "fr": "FR/"}

# The addresses that the program opens, English and French.
PAIRS = {
    "Download": "FR/Telecharger",
    "Donate": "FR/Faire_un_Don",
    "How_to_add_subtitles_to_the_iPhone_video": "FR/Comment_ajouter_les_sous-titres_a_la_video_iPhone",
    "Translations": "FR/Traductions",
    "Greetings": "FR/Remerciements",
    "Contact": "FR/Contact",
    "How_to_put_a_video_on_your_iPhone": "FR/Comment_mettre_une_video_sur_son_iPhone",
}
OPENED = [*PAIRS, *PAIRS.values()]
PAGES = [*FRONT.values(), *OPENED]
VERSION_REPLY = "current_version.php"


def language(path):
    return "fr" if path.startswith("FR/") else "en"


def partner(path):
    """The address of the same page in the other language."""
    both = {**PAIRS, FRONT["en"]: FRONT["fr"]}
    return both.get(path, {french: english for english, french in both.items()}.get(path))


def project_version():
    lists = (SOURCES / "CMakeLists.txt").read_text()
    return re.search(r"project\(\s*Vantreo\s+VERSION\s+([0-9.]+)", lists).group(1)


def file_of(path):
    """The file that a web server serves for an address of the site."""
    return WWW / (path + "index.html" if path == "" or path.endswith("/") else path)


class Page(html.parser.HTMLParser):
    """One page: its elements, ids and visible text."""

    _UNSPACED = {"pre", "code", "kbd", "script", "style"}

    def __init__(self, path):
        super().__init__(convert_charrefs=True)
        self.path = path
        self.elements = []  # (name, attributes) in order
        self.prose = []  # texts outside code, with the language they are in
        self._open = []
        self.source = file_of(path).read_text(encoding="utf-8")
        self.feed(self.source)
        self.close()
        self.ids = {attributes["id"] for _, attributes in self.elements if "id" in attributes}

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        self.elements.append((tag, attributes))
        if tag not in {"meta", "link", "img", "br", "base", "hr", "input"}:
            inherited = self._open[-1][1] if self._open else None
            self._open.append((tag, attributes.get("lang", inherited)))

    def handle_endtag(self, tag):
        while self._open and self._open.pop()[0] != tag:
            pass

    def handle_data(self, data):
        if not any(tag in self._UNSPACED for tag, _ in self._open):
            self.prose.append((self._open[-1][1] if self._open else None, data))

    def all(self, name):
        return [attributes for tag, attributes in self.elements if tag == name]

    def references(self):
        """(element, attributes, address as written) of everything that the page references."""
        for tag, attributes in self.elements:
            for key in ("href", "src", "srcset", "action", "poster", "data", "background"):
                if key in attributes:
                    yield tag, attributes, attributes[key]

    def target(self, address):
        """(path of the site, fragment) that a relative address leads to; fails above the site's
        root."""
        root = "http://site.invalid/above/"
        url = urllib.parse.urlsplit(urllib.parse.urljoin(root + self.path, address))
        assert url.netloc == "site.invalid" and url.path.startswith("/above/"), (
            f"{self.path}: {address} leads out of the site"
        )
        return urllib.parse.unquote(url.path.removeprefix("/above/")), url.fragment


def is_mail(address):
    return address.startswith("mailto:")

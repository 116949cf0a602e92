#!/usr/bin/env python3
"""Checks the links of a built site: every local address and anchor exists, and nothing is fetched from another host.

usage: check_site.py FOLDER
       check_site.py --self-test    checks a small site with one violation of each kind, and expects them to be found
"""

import html.parser
import pathlib
import sys
import tempfile
import urllib.parse

FETCHED = {("script", "src"), ("img", "src"), ("link", "href"), ("iframe", "src"), ("source", "src")}


class Page(html.parser.HTMLParser):
    """The anchors and the links of a page."""

    def __init__(self, path):
        super().__init__()
        self.anchors = {"", "top"}
        self.links = []
        self.fetched = []
        self.feed(path.read_text(errors="replace"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id" or (tag == "a" and name == "name"):
                self.anchors.add(value)
            elif name in ("href", "src") and value:
                self.links.append(value)
                if (tag, name) in FETCHED:
                    self.fetched.append(value)



def problems(folder):
    pages = {path: Page(path) for path in sorted(folder.rglob("*.html"))}
    for path, page in pages.items():
        if path.name == "404.html":  # its addresses start at the root of a server
            continue
        for link in dict.fromkeys(page.links):
            parts = urllib.parse.urlsplit(link)
            if parts.scheme or parts.netloc:
                if link in page.fetched and parts.scheme not in ("data", "javascript"):
                    yield path, link, "is fetched from elsewhere"
                continue
            target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
            if target.is_dir():
                target /= "index.html"
            anchor = urllib.parse.unquote(parts.fragment)
            if not target.exists():
                yield path, link, "does not exist"
            elif target in pages and anchor not in pages[target].anchors:
                yield path, link, "has no such anchor"


def self_test():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name).resolve()
        (folder / "b").mkdir()
        (folder / "b" / "index.html").write_text('<h1 id="here">b</h1><a name="there" href="../a.html#x%20y">a</a>')
        (folder / "a.html").write_text(
            '<p id="x y"><a href="b/#here">1</a><a href="b/index.html#there">2</a><a href="#x y">3</a>'
            '<a href="https://example.org/">4</a><a href="">5</a><img src="data:,">'
            '<a href="missing.html">m</a><img src="missing.png"><a href="b/#nowhere">n</a><a href="#nowhere">o</a>'
            '<script src="https://example.org/x.js"></script><link href="//example.org/x.css">'
        )
        found = [link for _, link, _ in problems(folder)]
    expected = ["missing.html", "missing.png", "b/#nowhere", "#nowhere", "https://example.org/x.js", "//example.org/x.css"]
    if found != expected:
        sys.exit(f"check_site.py: the self-test found {found} instead of {expected}")


def main(folder):
    if folder == "--self-test":
        self_test()
        return
    folder = pathlib.Path(folder).resolve()
    count = 0
    for path, link, problem in problems(folder):
        print(f"{path.relative_to(folder)}: {link} {problem}", file=sys.stderr)
        count += 1
    if count:
        sys.exit(f"check_site.py: {count} broken links")


if __name__ == "__main__":
    main(sys.argv[1])

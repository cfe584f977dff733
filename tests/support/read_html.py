#!/usr/bin/env python3
"""Prints what a web page holds as one line of JSON: language, direction, charset, title, cells of the table's rows with
their classes, and what is wrong with it (tags that don't match, elements that load something from elsewhere)."""
import json
import sys
from html.parser import HTMLParser

VOID = {"area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta", "source", "track", "wbr"}


class Page(HTMLParser):
    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.found = {"doctype": "", "lang": "", "dir": "", "charset": "", "title": "", "heads": [], "rows": [],
                      "classes": [], "wrong": []}
        self.open = []
        self.text = None

    def handle_decl(self, decl):
        self.found["doctype"] = decl

    def handle_starttag(self, tag, attrs):
        values = dict(attrs)
        if tag == "html":
            self.found["lang"], self.found["dir"] = values.get("lang", ""), values.get("dir", "")
        if tag == "meta" and "charset" in values:
            self.found["charset"] = values["charset"]
        if "src" in values or tag in ("link", "script"):
            self.found["wrong"].append("loads " + tag)
        if tag == "tr" and "tbody" in self.open:
            self.found["rows"].append([])
            self.found["classes"].append([])
        if tag == "td":
            self.found["classes"][-1].append(values.get("class", ""))
        if tag in ("th", "td", "title"):
            self.text = ""
        if tag not in VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.found["wrong"].append("end of " + tag)
        if tag == "title":
            self.found["title"] = self.text
        if tag == "th":
            self.found["heads"].append(self.text)
        if tag == "td":
            self.found["rows"][-1].append(self.text)
        if tag in ("th", "td", "title"):
            self.text = None

    def handle_data(self, data):
        if self.text is not None:
            self.text += data


page = Page()
with open(sys.argv[1], encoding="utf-8", errors="strict", newline="") as file:
    page.feed(file.read())
page.close()
page.found["wrong"] += ["never closed: " + tag for tag in page.open]
print(json.dumps(page.found))

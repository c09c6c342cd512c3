#!/usr/bin/env python3
"""The documents lead to what is there: links, and paths of this repository in backquotes."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
LINK = re.compile(r"\]\(([^)#\s]+)(?:#[^)]*)?\)")
FOLDERS = "scripts|hvinteg|platform|hvhost|tests|bench|fuzz|docs|examples|cmake"
PATH = re.compile(rf"`((?:{FOLDERS})/[\w./-]+)`")


def faults_of(document):
    text = document.read_text(encoding="utf-8")
    for link in LINK.findall(text):
        if "://" not in link and not (document.parent / link).exists():
            yield f"{document.relative_to(ROOT)}: the link {link} leads nowhere"
    for path in PATH.findall(text):
        if not (ROOT / path).exists():
            yield f"{document.relative_to(ROOT)}: there is no {path}"


def main():
    documents = [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")]
    faults = [fault for document in documents for fault in faults_of(document)]
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

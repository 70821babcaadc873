"""The parts of a page of Markdown: sections and fenced blocks."""
import re
import sys


def read(path):
    return path.read_text(encoding="utf-8")


def section(path, title):
    """What stands below a heading of the second level."""
    found = re.search(rf"^## {re.escape(title)}\n(.*?)(?=^## |\Z)", read(path), re.M | re.S)
    if not found:
        sys.exit(f"{path.name} has no section {title}")
    return found[1]


def fenced(text):
    """All fenced blocks, each with its language, which may be empty."""
    return re.findall(r"^```(\w*)\n(.*?)^```$", text, re.M | re.S)


def blocks(text, *languages):
    return [code for language, code in fenced(text) if language in languages]

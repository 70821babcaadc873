"""The pages show the samples that the tests run, with what they print, and explain every finding.

A block of C++, C or Python in a page of docs/ is a whole file of docs/samples or of the bindings.
"""
import pathlib
import re
import sys


def read(path):
    return path.read_text(encoding="utf-8")


def blocks(text):
    """The fenced blocks of code that have a language."""
    return re.findall(r"^```(cpp|c|python)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)


def samples_not_shown(root, pages):
    folder = root / "docs" / "samples"
    shown_by = {folder / name.name: pages for name in sorted(folder.iterdir())}
    readme = [read(root / "README.md")]
    for name in ["example.py", "example.out"]:
        shown_by[root / "bindings" / "python" / name] = readme
    for sample, texts in shown_by.items():
        if not any("```\n" + read(sample) + "```" in re.sub(r"```\w+", "```", t) for t in texts):
            yield f"no page shows {sample.relative_to(root)} as it is"


def blocks_not_run(root, pages):
    run = {read(path) for path in (root / "docs" / "samples").iterdir()}
    for path, text in pages.items():
        for language, code in blocks(text):
            if code not in run:
                yield f"{path.name} shows {language} that no test runs: {code.splitlines()[0]}"


def pictures_missing(pages):
    for path, text in pages.items():
        for name in re.findall(r"!\[[^]]*\]\(([^)]*)\)", text):
            if not (path.parent / name).is_file():
                yield f"{path.name} shows {name}, which is not there"


def section(text, heading):
    return text.split(f"\n## {heading}\n")[1].split("\n## ")[0]


def known_findings(root):
    diagnosis = read(root / "api" / "kestrel.h").split("---- Diagnosis")[1]
    yield from re.findall(r"#define (KESTREL_\w+) \d+", diagnosis)
    host = read(root / "docs" / "host.md")
    for heading in ["Findings", "Why a file could not be examined"]:
        for row in re.findall(r"^\| (`[^|]*`) \|", section(host, heading), re.MULTILINE):
            yield from re.findall(r"`([a-z0-9-]+)`", row)


def findings_not_explained(root, known):
    page = read(root / "docs" / "troubleshooting.md")
    rows = re.findall(r"^\| (`[^|]*`) \|", page, re.MULTILINE)
    explained = set(re.findall(r"`([\w-]+)`", " ".join(rows)))
    yield from (f"troubleshooting.md does not explain {name}" for name in known - explained)


def main():
    root = pathlib.Path(sys.argv[1])
    pages = {path: read(path) for path in sorted((root / "docs").glob("*.md"))}
    known = set(known_findings(root))
    wrong = [*samples_not_shown(root, pages.values()), *blocks_not_run(root, pages),
             *pictures_missing(pages), *findings_not_explained(root, known)]
    print("\n".join([*wrong, f"{len(pages)} pages, {len(known)} findings"]))
    sys.exit(1 if wrong or len(known) < 30 else 0)


main()

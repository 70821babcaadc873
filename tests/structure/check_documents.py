"""The pages show the samples that the tests run, with what they print, and explain every finding
of the library and the program; Python has a name for each of the library's.

usage: check_documents.py ROOT

Each fenced block of a page is one of these: a whole file that a test builds and runs, or what that
prints; a `console` block, or one of a section of docs/install.md, which tests run from the page; or
one of those that no test can run as they stand, listed here with the reason.
"""
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "documents"))
import pages  # noqa: E402 (it stands in a folder beside this one)

# What tests build, run and compare; each of these files must stand in a page as it is.
SAMPLES = ["docs/samples/*", "bindings/python/example.*", "tests/consumers/layouts.*"]
SHOWN = ["README.md", "examples/README.md", "bindings/python/README.md", "docs/*.md",
         "host/README.md", "host/*/README.md"]
NOT_RUN = {
    ("README.md", "./scripts/demo.sh [MEDIA_FILE]"): "builds all, and runs this test",
    ("docs/install.md", "./scripts/setup.sh demo"): "needs root and a network",
    ("docs/install.md", "cpack"): "tests/packages makes them in a folder of its own",
    ("bindings/python/README.md", "import kestrel"): "run by the package's own tests",
    ("bindings/python/README.md", "Stereo 2 0"): "compared by the package's own tests",
    ("bindings/python/README.md", "python3 -m venv"): "tests/c_api installs so, without a network",
    ("bindings/python/README.md", "cd bindings/python"): "the package's own tests",
}


def samples_not_shown(root, texts):
    for pattern in SAMPLES:
        for path in sorted(root.glob(pattern)):
            if not any(code == pages.read(path) for text in texts.values()
                       for _, code in pages.fenced(text)):
                yield f"no page shows {path.relative_to(root)} as it is"


def reason_not_run(name, code):
    return next((key for key in NOT_RUN if key[0] == name and code.startswith(key[1])), None)


def blocks_not_run(root, texts):
    run = {pages.read(path) for pattern in SAMPLES for path in root.glob(pattern)}
    unused = set(NOT_RUN)
    for name, text in texts.items():
        for language, code in pages.fenced(text):
            known = reason_not_run(name, code)
            unused.discard(known)
            by_section = name == "docs/install.md" and language in ("sh", "cmake")
            if not (known or by_section or language == "console" or code in run):
                yield f"{name} shows what no test runs: {code.splitlines()[0]}"
    yield from (f"{name} has no block any more that begins with {code}" for name, code in unused)


def sections_not_run(root, texts):
    """The tests of installed trees name each section that they do as it says."""
    run = pages.read(root / "tests" / "consumers" / "CMakeLists.txt")
    for name, languages in [("docs/install.md", ["sh"]), ("examples/README.md", ["console"])]:
        for title in re.findall(r"^## (.*)$", texts[name], re.M):
            if pages.blocks(pages.section(root / name, title), *languages):
                if f'"{title}"' not in run:
                    yield f"tests/consumers does not do what {name} says in {title}"


def files_missing(root, texts):
    for name, text in texts.items():
        for link in re.findall(r"!\[[^]]*\]\(([^)]*)\)", text):
            if not (root / name).parent.joinpath(link).is_file():
                yield f"{name} shows {link}, which is not there"
        for script in re.findall(r"(?<![\w/])(?:\./)?(scripts/[\w-]+\.(?:sh|py))", text):
            if not (root / script).is_file():
                yield f"{name} names {script}, which is not there"


def known_findings(root):
    diagnosis = pages.read(root / "api" / "kestrel.h").split("---- Diagnosis")[1]
    yield from re.findall(r"#define (KESTREL_\w+) \d+", diagnosis)
    for heading in ["Findings", "Why a file could not be examined"]:
        rows = pages.section(root / "docs" / "host.md", heading)
        for row in re.findall(r"^\| (`[^|]*`) \|", rows, re.M):
            yield from re.findall(r"`([a-z0-9-]+)`", row)


def findings_not_explained(texts, known):
    rows = re.findall(r"^\| (`[^|]*`) \|", texts["docs/troubleshooting.md"], re.M)
    explained = set(re.findall(r"`([\w-]+)`", " ".join(rows)))
    yield from (f"troubleshooting.md does not explain {name}" for name in known - explained)


# These end the program before any file is looked at, so no result has them.
BEFORE_ANY_FILE = {"json-unreadable", "bad-json", "json-too-long"}


def findings_of_host(root):
    """The ids that the host's sources give to findings and to files that are not examined."""
    for path in sorted((root / "host").glob("**/*.cc")):
        text = pages.read(path)
        for id in re.findall(r'"([a-z0-9-]+)",\s*Severity::', text):
            yield path, id
        for id in re.findall(r'NotExamined\(\s*"([a-z0-9-]+)"', text):
            yield path, id


def findings_not_told(root, known):
    for path, id in findings_of_host(root):
        if id not in known | BEFORE_ANY_FILE:
            yield f"docs/host.md does not tell of {id} in {path.name}"
    python = pages.read(root / "bindings" / "python" / "kestrel" / "analysis.py")
    for name in sorted(known):
        if name.startswith("KESTREL_") and f"    {name.removeprefix('KESTREL_')} = " not in python:
            yield f"bindings/python/kestrel/analysis.py has no {name}"


def main():
    root = pathlib.Path(sys.argv[1])
    paths = [path for pattern in SHOWN for path in sorted(root.glob(pattern))]
    texts = {path.relative_to(root).as_posix(): pages.read(path) for path in paths}
    known = set(known_findings(root))
    wrong = [*samples_not_shown(root, texts), *blocks_not_run(root, texts),
             *sections_not_run(root, texts), *files_missing(root, texts),
             *findings_not_explained(texts, known), *findings_not_told(root, known)]
    told = len(list(findings_of_host(root)))
    print("\n".join([*wrong, f"{len(texts)} pages, {len(known)} findings, {told} places in host/"]))
    sys.exit(1 if wrong or len(known) < 30 or told < 20 else 0)


main()

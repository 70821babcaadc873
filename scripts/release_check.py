#!/usr/bin/env python3
"""The lines of scripts/release-check.sh: what must hold before a version is given away.

A line is a title and a function of the checked tree. The function returns what the table shows when
the line is done, or raises Failed or Open. Quick lines look at files and at git; the others build.
"""
import argparse
import datetime
import json
import pathlib
import re
import subprocess
import sys
import time

VERSION = r"(\d+\.\d+\.\d+)"
LEFTOVERS = re.compile(r"\b(?:TO" r"DO|FIX" r"ME|XX" r"X)\b")  # not to be found here itself
MACHINE_PATHS = re.compile(r"(?:/home|/root|/Users|[A-Z]:\\Users)[/\\]\w")
BY_HAND = [
    ("the DLL by MSVC", "cmake --preset msvc-x64 on Windows, and its tests; never run so far"),
    ("the vcpkg port", "packaging/README.md has the command; never run so far"),
    ("the Conan recipe", "packaging/README.md has the command; never run so far"),
    ("the tag", "git tag -a v{version}, then push it with the packages of build/release"),
]


class Failed(Exception):
    """The line does not hold."""


class Open(Exception):
    """Nobody has decided it yet."""


class Tree:
    """The checked tree: its files, its repository and where logs go."""

    def __init__(self, root):
        self.root = root

    def text(self, file):
        path = self.root / file
        if not path.is_file():
            raise Failed(f"{file} is not there")
        return path.read_text(encoding="utf-8")

    def git(self, *arguments):
        ran = subprocess.run(["git", *arguments], cwd=self.root, capture_output=True, check=False)
        return ran.stdout.decode("utf-8", "replace").strip() if ran.returncode == 0 else None

    def found(self, file, pattern):
        """What the one group of the pattern holds, which the file must hold exactly once."""
        every = re.findall(pattern, self.text(file), re.MULTILINE)
        if len(every) != 1:
            raise Failed(f"{file} states it {len(every)} times, not once: {pattern}")
        return every[0]

    def version(self):
        return self.found("CMakeLists.txt", rf"^  VERSION {VERSION}$")

    def run(self, name, *command):
        """Runs a long command; its log is kept. Returns the log."""
        log = self.root / "build" / "release-check" / f"{name}.log"
        log.parent.mkdir(parents=True, exist_ok=True)
        with log.open("wb") as output:
            ran = subprocess.run(command, cwd=self.root, stdout=output, stderr=output, check=False)
        if ran.returncode != 0:
            raise Failed(f"see {log.relative_to(self.root)}")
        return log.read_text(encoding="utf-8", errors="replace")


def number(version):
    return tuple(int(part) for part in version.split("."))


# ---- git --------------------------------------------------------------------------------------


def clean_tree(tree):
    changed = tree.git("status", "--porcelain")
    if changed is None:
        raise Failed("this is no git checkout")
    if changed:
        raise Failed(f"not committed: {', '.join(line[3:] for line in changed.splitlines()[:3])}")
    return f"commit {tree.git('rev-parse', '--short', 'HEAD')}"


def free_tag(tree):
    tag = f"v{tree.version()}"
    tagged = tree.git("rev-parse", "--verify", "--quiet", f"{tag}^{{commit}}")
    if tagged and tagged != tree.git("rev-parse", "HEAD"):
        raise Failed(f"{tag} stands on another commit: raise the version")
    return f"{tag} is on this commit" if tagged else f"{tag} is free"


# ---- versions ---------------------------------------------------------------------------------

# Where the version is written once more: the first group must be the project's.
STATED = {
    "packaging/vcpkg/kestrel/vcpkg.json": rf'^  "version": "{VERSION}",$',
    "CHANGELOG.md": rf"\A# Changelog\n\n## {VERSION}\b",
}
# Where only its major and minor numbers are.
STATED_IN_SHORT = {
    "docs/install.md": r"^find_package\(kestrel (\d+\.\d+) REQUIRED\)$",
    "tests/consumers/find_package/CMakeLists.txt": r"^find_package\(kestrel (\d+\.\d+) REQUIRED\)$",
    "tests/consumers/find_package_cxx/CMakeLists.txt":
        r"^find_package\(kestrel (\d+\.\d+) REQUIRED\)$",
}
# Where it is taken from the project, by these words, and no number may stand.
DERIVED = {
    "cmake/kestrel_version.h.in": "@PROJECT_VERSION@",
    "cmake/kestrel.pc.in": "@PROJECT_VERSION@",
    "cmake/KestrelPackages.cmake": "set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})",
    "docs/Doxyfile.in": "@VERSION@",
    "bindings/python/pyproject.toml": 'dynamic = ["version"]',
    "packaging/finish.cmake": "--version ${CPACK_PACKAGE_VERSION}",
    "docs/man/kestrel.1": ".Nm kestrel",
}
# Where a pattern of its own finds it in CMakeLists.txt.
READING = ["bindings/python/setup.py", "packaging/conan/conanfile.py"]


def wrong_statements(tree, version):
    short = ".".join(version.split(".")[:2])
    for places, expected in [(STATED, version), (STATED_IN_SHORT, short)]:
        for file, pattern in places.items():
            found = re.findall(pattern, tree.text(file), re.MULTILINE)
            if found != [expected]:
                yield f"{file} says {' and '.join(found) or 'none'}"


def wrong_derivations(tree, version):
    for file, words in DERIVED.items():
        text = tree.text(file)
        if words not in text:
            yield f"{file} does not take it from the project ({words})"
        for literal in re.findall(rf"(?i:kestrel|version)\W{{1,3}}{VERSION}", text):
            yield f"{file} says {literal}"
    for file in READING:
        pattern = re.search(r're\.search\(r"([^"]*)"', tree.text(file))
        found = pattern and re.search(pattern[1], tree.text("CMakeLists.txt"))
        if not found or found[1] != version:
            yield f"{file} reads {found[1] if found else 'none'}"


def same_version(tree):
    version = tree.version()
    wrong = [*wrong_statements(tree, version), *wrong_derivations(tree, version)]
    if wrong:
        raise Failed(f"CMakeLists.txt says {version}, but " + "; ".join(wrong))
    places = len(STATED) + len(STATED_IN_SHORT) + len(DERIVED) + len(READING) + 1
    return f"{version} in {places} places"


def dated_entry(tree):
    heading = re.search(r"^## (.*)$", tree.text("CHANGELOG.md"), re.MULTILINE)
    top = heading[1] if heading else ""
    dated = re.fullmatch(rf"{VERSION} \((\d{{4}}-\d\d-\d\d)\)", top)
    if not dated:
        raise Failed(f'CHANGELOG.md: the top entry is "{top}", not "VERSION (YYYY-MM-DD)"')
    try:
        date = datetime.date.fromisoformat(dated[2])
    except ValueError as error:
        raise Failed(f"CHANGELOG.md: {dated[2]} is no date") from error
    if date > datetime.datetime.now(datetime.timezone.utc).date():
        raise Failed(f"CHANGELOG.md: {date} is still to come")
    return top


BASELINE = "tests/abi/libkestrel-dll64.abi"


def baseline_version(tree):
    """The version whose headers the old programs of tests/abi include."""
    file = "tests/abi/baseline/api/kestrel_version.h"
    header = tree.found(file, rf'^#define KESTREL_VERSION "{VERSION}"$')
    told = tree.found("tests/abi/baseline/README.md", rf"as of version {VERSION}")
    if header != told:
        raise Failed(f"tests/abi/baseline/README.md says {told}, {file} {header}")
    return header


def raised_for_interface(tree):
    version, baseline = tree.version(), baseline_version(tree)
    if number(baseline) > number(version):
        raise Failed(f"tests/abi/baseline is of {baseline}, later than {version}")
    last = tree.git("describe", "--tags", "--abbrev=0", "--match", "v[0-9]*", "HEAD^")
    if last is None:
        return "there is no earlier version"
    same = tree.git("diff", "--quiet", last, "HEAD", "--", BASELINE) is not None
    if not same and number(last[1:])[:2] >= number(version)[:2]:
        raise Failed(f"{BASELINE} changed since {last}: raise the minor version")
    return f"{'the same as in' if same else 'raised since'} {last}"


# ---- what stands in the files -------------------------------------------------------------------


def lines_of(tree):
    """Every line of every text file of the repository, with its place."""
    for file in (tree.git("ls-files", "-z") or "").split("\0"):
        path = tree.root / file
        if file.startswith("fuzz/corpus/") or not path.is_file():
            continue
        data = path.read_bytes()
        if b"\0" in data:
            continue
        for at, line in enumerate(data.decode("utf-8", "replace").splitlines(), start=1):
            yield f"{file}:{at}", line


def no_leftovers(tree):
    here = str(tree.root)
    looked_at, found = 0, []
    for place, line in lines_of(tree):
        looked_at += 1
        if LEFTOVERS.search(line) or MACHINE_PATHS.search(line) or here in line:
            found.append(f"{place}: {line.strip()[:60]}")
    if found or not looked_at:
        raise Failed("; ".join(found[:5]) or "no line was looked at")
    return f"{looked_at} lines looked at"


def chosen_licence(tree):
    port = json.loads(tree.text("packaging/vcpkg/kestrel/vcpkg.json"))
    files = [name for name in ("LICENSE", "LICENCE", "COPYING") if (tree.root / name).is_file()]
    if not files and port["license"] is None:
        raise Open("no licence chosen")
    if not files or port["license"] is None:
        raise Failed("a file LICENSE and packaging/vcpkg/kestrel/vcpkg.json must both name it")
    if "No licence has been chosen" in tree.text("packaging/copyright"):
        raise Failed("packaging/copyright says that there is none")
    return f"{port['license']}, {files[0]}"


def maintainers_address(tree):
    contact = tree.found("cmake/KestrelPackages.cmake", r'^set\(KESTREL_PACKAGE_CONTACT "(.*)"$')
    if "localhost" in contact or "example" in contact:
        raise Open(f"the packages' contact is a placeholder: {contact}")
    return contact


def structure_picture(tree):
    return tree.run("structure-picture", sys.executable, "-B", "scripts/make-structure-picture.py",
                    "--check").strip()


# ---- what builds and runs -----------------------------------------------------------------------


def tests_of_release(tree, name, pattern):
    """The tests of the release build whose names match; how many they were."""
    tree.run(f"{name}-configure", "cmake", "--preset", "release")
    tree.run(f"{name}-build", "cmake", "--build", "--preset", "release")
    log = tree.run(name, "ctest", "--test-dir", "build/release", "-R", pattern,
                   "--output-on-failure", "--no-tests=error")
    return passed(log)


def passed(log):
    """How many tests ctest says to have passed; it ends with an error when one did not."""
    return f"{re.search(r'tests passed.* out of ([0-9]+)', log)[1]} tests"


def all_tests(tree):
    return passed(tree.run("tests", "scripts/test.sh"))


def proof(tree):
    return tree.run("proof", "scripts/proof.sh").strip().splitlines()[-1]


def site(tree):
    tree.run("documents", "scripts/docs.sh")
    pages = len(list((tree.root / "build/docs/html").glob("*.html")))
    return f"{pages} pages"


def packages(tree):
    return tests_of_release(tree, "packages", "/(package|recipes_)")


def interface_is_baseline(tree):
    return tests_of_release(tree, "interface", "/(abi_|old_|exports_)")


def generated_pages(tree):
    return tests_of_release(tree, "generated", "/(tables_are|pictures_are|structure_picture)")


QUICK = [
    ("the tree is clean", clean_tree),
    ("the tag can be given", free_tag),
    ("the version is the same everywhere", same_version),
    ("CHANGELOG has the version and its date", dated_entry),
    ("a changed interface has a raised version", raised_for_interface),
    ("nothing is left over in the files", no_leftovers),
    ("a licence is chosen", chosen_licence),
    ("the maintainers have an address", maintainers_address),
    ("the picture of the structure is up to date", structure_picture),
]
LONG = [
    ("the documents build without a warning", site),
    ("tables and pictures are up to date", generated_pages),
    ("the binary interface is the baseline", interface_is_baseline),
    ("the packages are made, and hold what they should", packages),
    ("every test passes", all_tests),
    ("every kind of proof holds", proof),
]


def judged(tree, check):
    """The word for a line, and what the table says of it."""
    began = time.monotonic()
    try:
        said = check(tree)
    except Failed as failure:
        return "failed", str(failure)
    except Open as undecided:
        return "open", f"open: {undecided}"
    minutes = (time.monotonic() - began) / 60
    return "done", said + (f" ({minutes:.0f} min)" if minutes >= 1 else "")


def show(word, title, said):
    print(f"{word:<9} {title:<50} {said}", flush=True)


def exit_code(words, allow_open):
    return 1 if "failed" in words or ("open" in words and not allow_open) else 0


def options():
    parser = argparse.ArgumentParser(prog="release-check.sh")
    parser.add_argument("--quick", action="store_true", help="leave out what builds or runs")
    parser.add_argument("--allow-open", action="store_true", help="what is open is no failure")
    return parser.parse_args()


def main():
    asked = options()
    tree = Tree(pathlib.Path(__file__).resolve().parent.parent)
    words = []
    for title, check in QUICK + LONG:
        if asked.quick and (title, check) in LONG:
            word, said = "left out", "--quick"
        else:
            word, said = judged(tree, check)
        words.append(word)
        show(word, title, said)
    for title, how in BY_HAND:
        show("by hand", title, how.format(version=tree.version()))
    counts = ", ".join(f"{words.count(word)} {word}" for word in dict.fromkeys(words))
    print(f"\n{counts}, {len(BY_HAND)} by hand")
    return exit_code(words, asked.allow_open)


if __name__ == "__main__":
    sys.exit(main())

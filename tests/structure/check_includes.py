"""Includes run one way: api <- catalogue <- analyser <- standards <- plain_c, and host -> api. Within
host/ and tests/host/ they run from room to room, commands -> ... -> basics. First it is tried on
made-up trees with one include each, of which it must find the wrong ones.

usage: check_includes.py ROOT
"""
import pathlib
import re
import sys
import tempfile

MAY_INCLUDE = {
    "api": {"api"},
    "catalogue": {"api", "catalogue"},
    "analyser": {"api", "catalogue", "analyser"},
    "standards": {"api", "catalogue", "analyser", "standards"},
    "plain_c": {"api", "catalogue", "analyser", "standards", "plain_c"},
    "host": {"api", "host"},
}
# Each may include itself and those after it.
ROOMS = ["commands", "scanning", "reporting", "judging", "evidence", "reading", "basics"]
# host/main.cc stands above all rooms; what tests share is theirs together.
ABOVE = {"main.cc", "support"}

# Where a file stands, what it includes, whether it may.
TRIALS = [
    ("analyser/a.cc", "catalogue/b.h", True),
    ("catalogue/a.cc", "analyser/b.h", False),
    ("host/basics/a.cc", "api/b.h", True),
    ("host/basics/a.cc", "plain_c/b.h", False),
    ("host/commands/a.cc", "host/basics/b.h", True),
    ("host/judging/a.h", "host/judging/b.h", True),
    ("host/judging/a.h", "host/evidence/b.h", True),
    ("host/evidence/a.h", "host/judging/b.h", False),
    ("host/basics/a.cc", "host/reading/b.h", False),
    ("host/reporting/html/a.cc", "host/scanning/b.h", False),
    ("host/attic/a.cc", "host/basics/b.h", False),
    ("host/basics/a.cc", "host/attic/b.h", False),
    ("host/a.h", "host/basics/b.h", False),
    ("host/main.cc", "host/commands/b.h", True),
    ("host/basics/a.cc", "host/main.h", False),
    ("tests/host/evidence/a_test.cc", "host/reading/b.h", True),
    ("tests/host/evidence/a_test.cc", "host/judging/b.h", False),
    ("tests/host/evidence/a_test.cc", "tests/host/support/b.h", True),
    ("tests/host/support/a.cc", "host/judging/b.h", True),
]


def sources(folder):
    return (file for file in sorted(folder.glob("**/*")) if file.suffix in {".h", ".cc"})


def included(file):
    return re.findall(r'^#include "([^"]+/[^"]+)"', file.read_text(encoding="utf-8"), re.M)


def between_folders(root):
    """Each include that leads to a folder of the tree: the file, the target, whether it may."""
    folders = set(MAY_INCLUDE) | {path.name for path in root.iterdir() if path.is_dir()}
    for folder, allowed in MAY_INCLUDE.items():
        for file in sources(root / folder):
            for target in included(file):
                if target.split("/")[0] in folders:
                    yield file, target, target.split("/")[0] in allowed


def may_lead(room, target):
    if target not in ROOMS:
        return False
    return room in ABOVE or room in ROOMS and ROOMS.index(room) <= ROOMS.index(target)


def between_rooms(root):
    for folder in [root / "host", root / "tests" / "host"]:
        for file in sources(folder):
            room = file.relative_to(folder).parts[0]
            for target in included(file):
                if target.startswith("host/"):
                    yield file, target, may_lead(room, target.split("/")[1])


def arrows(root):
    return [*between_folders(root), *between_rooms(root)]


def wrong_trials():
    for place, target, is_allowed in TRIALS:
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder, place)
            file.parent.mkdir(parents=True)
            file.write_text(f'#include "{target}"\n', encoding="utf-8")
            if all(allowed for *_, allowed in arrows(pathlib.Path(folder))) != is_allowed:
                yield f"trial: {place} including {target} should be " + (
                    "allowed" if is_allowed else "found")


def main():
    root = pathlib.Path(sys.argv[1])
    found = arrows(root)
    problems = [*wrong_trials(), *(f"{file.relative_to(root)} may not include {target}"
                                   for file, target, allowed in found if not allowed)]
    print("\n".join([*problems, f"{len(found)} includes between folders and rooms looked at"]))
    sys.exit(1 if problems or len(found) < 100 else 0)


main()

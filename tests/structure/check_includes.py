"""Includes run one way: api <- catalogue <- analyser <- standards <- plain_c, and host -> api."""
import pathlib
import re
import sys

MAY_INCLUDE = {
    "api": {"api"},
    "catalogue": {"api", "catalogue"},
    "analyser": {"api", "catalogue", "analyser"},
    "standards": {"api", "catalogue", "analyser", "standards"},
    "plain_c": {"api", "catalogue", "analyser", "standards", "plain_c"},
    "host": {"api", "host"},
}


def main():
    root = pathlib.Path(sys.argv[1])
    folders = {path.name for path in root.iterdir() if path.is_dir()}
    problems, arrows = [], 0
    for folder, allowed in MAY_INCLUDE.items():
        for file in sorted((root / folder).glob("**/*.*")):
            if file.suffix not in {".h", ".cc"}:
                continue
            text = file.read_text(encoding="utf-8")
            for target in re.findall(r'^#include "([^"/]+)/', text, re.M):
                arrows += 1
                if target in folders and target not in allowed:
                    problems.append(f"{file.relative_to(root)} includes from {target}/")
    for problem in problems:
        print(problem)
    print(f"{arrows} includes between folders looked at")
    sys.exit(1 if problems or arrows == 0 else 0)


main()

"""The examples that the README shows are the ones that the tests run, with what they print."""
import pathlib
import sys


def main():
    root = pathlib.Path(sys.argv[1])
    readme = (root / "README.md").read_text(encoding="utf-8")
    shown = ["bindings/python/example.py", "bindings/python/example.out"]
    missing = [name for name in shown if (root / name).read_text(encoding="utf-8") not in readme]
    for name in missing:
        print(f"README.md does not show {name} as it is")
    print(f"{len(shown)} files looked for in the README")
    sys.exit(1 if missing else 0)


main()

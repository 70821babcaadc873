"""A sample prints what its page shows: check_output.py EXPECTED COMMAND..."""
import difflib
import pathlib
import subprocess
import sys


def main():
    expected = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8").splitlines()
    ran = subprocess.run(sys.argv[2:], stdout=subprocess.PIPE, check=True)
    printed = ran.stdout.decode("utf-8").splitlines()
    difference = list(difflib.unified_diff(expected, printed, "expected", "printed", lineterm=""))
    print("\n".join(difference))
    sys.exit(1 if difference or not expected else 0)


main()

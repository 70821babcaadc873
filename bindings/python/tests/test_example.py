"""The example prints what stands in example.out, and that of the README what stands below it."""

import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]


class ExampleTest(unittest.TestCase):
    def test_prints_the_expected_output(self) -> None:
        expected = (ROOT / "example.out").read_text(encoding="utf-8")
        self.assert_prints([str(ROOT / "example.py")], expected)

    def test_the_readme_shows_what_its_example_prints(self) -> None:
        readme = (ROOT / "README.md").read_text(encoding="utf-8")
        shown = re.search(r"^```python\n(.*?)^```\n\n```\n(.*?)^```$", readme, re.M | re.S)
        assert shown is not None
        self.assert_prints(["-c", shown[1]], shown[2])

    def assert_prints(self, arguments: "list[str]", expected: str) -> None:
        environment = {**os.environ, "PYTHONPATH": str(ROOT)}
        run = subprocess.run(
            [sys.executable, *arguments],
            env=environment,
            capture_output=True,
            text=True,
            check=False,
        )
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.stdout, expected)


if __name__ == "__main__":
    unittest.main()

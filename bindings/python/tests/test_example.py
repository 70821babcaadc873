"""The example prints what stands in example.out."""

import os
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]


class ExampleTest(unittest.TestCase):
    def test_prints_the_expected_output(self) -> None:
        environment = {**os.environ, "PYTHONPATH": str(ROOT)}
        run = subprocess.run(
            [sys.executable, str(ROOT / "example.py")],
            env=environment,
            capture_output=True,
            text=True,
            check=False,
        )
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.stdout, (ROOT / "example.out").read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()

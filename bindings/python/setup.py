"""Takes the version from the project's CMakeLists.txt, its only place; the rest is declared."""

import re
from pathlib import Path

from setuptools import setup

PROJECT = Path(__file__).resolve().parents[2] / "CMakeLists.txt"
VERSION = re.search(r"project\(kestrel\s+VERSION\s+([0-9.]+)", PROJECT.read_text(encoding="utf-8"))
if VERSION is None:
    raise SystemExit(f"{PROJECT} states no version")

setup(version=VERSION[1])

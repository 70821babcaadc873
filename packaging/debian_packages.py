"""What Debian's package database says of the build machine: where its files come from."""

import fnmatch
import functools
import os
import platform
import re
import subprocess
from typing import NamedTuple


class DebianPackage(NamedTuple):
    name: str
    version: str
    architecture: str


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


@functools.lru_cache(maxsize=None)
def installed(name):
    """The package of this name, as "libfmt9" or "libfmt9:amd64"."""
    form = "${Package}\t${Version}\t${Architecture}\n"
    return DebianPackage(*output("dpkg-query", "-W", "-f", form, name).splitlines()[0].split("\t"))


def owners(pattern):
    """The packages and paths of all installed files that a pattern matches."""
    lines = output("dpkg-query", "-S", pattern).splitlines()
    files = [line for line in lines if not line.startswith("diversion")]
    pairs = [re.fullmatch(r"(.+?): (.+)", line) for line in files]
    return [
        (installed(pair[1].split(", ")[0]), pair[2])
        for pair in pairs
        if fnmatch.fnmatch(pair[2], pattern) and os.path.isfile(pair[2])
    ]


def owner_of_shared_library(file_name):
    """The package of a library that the loader finds by this name."""
    return owners(f"*/{platform.machine()}-linux-gnu/{file_name}")[0][0]


def owner_of_copy(path):
    """The package of the installed file that a file is a copy of."""
    with open(path, "rb") as file:
        content = file.read()
    for package, origin in owners(f"*/{os.path.basename(path)}"):
        with open(origin, "rb") as file:
            if file.read() == content:
                return package
    raise SystemExit(f"{path} is a copy of no packaged file")


def copyright_of(package):
    """What the package says about its authors and licences."""
    with open(f"/usr/share/doc/{package.name}/copyright", encoding="utf-8") as file:
        return file.read()

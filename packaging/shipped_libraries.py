"""The libraries in a package and behind it, found by looking into its programs.

Three kinds: those that a program finds on the user's system, those whose DLLs lie in the package,
and those that are headers and so compiled into the program.
"""

import re
from typing import NamedTuple, Optional

import debian_packages
from debian_packages import DebianPackage

OWN_STEM = "libkestrel-dll64"
PROGRAMS = {"kestrel", "kestrel.exe"}
# A header of each library that is compiled into the program; of libfmt on Windows the whole.
COMPILED_IN = ["CLI/CLI.hpp", "fmt/format.h", "kainjow/mustache.hpp", "nlohmann/json.hpp"]


class Link(NamedTuple):
    """A file of the package needs a file of the package or a library of the system."""

    user: str
    kind: str
    own_file: Optional[str]
    library: Optional[DebianPackage]


def is_binary(path):
    return path.suffix in {".so", ".dll", ".exe"} or path.name in PROGRAMS and "bin" in path.parts


def binaries(files):
    return [path for path in files if is_binary(path)]


def needed_names(path, objdump):
    header = debian_packages.output(objdump, "-p", path)
    return re.findall(r"^\s*(?:NEEDED\s+|DLL Name: )(\S+)", header, re.M)


def dynamic_link(user, needed, files, version):
    """None for what Windows itself brings."""
    own = [path for path in files if path.name.lower() == needed.lower()]
    if own:
        return Link(str(user), "DYNAMIC_LINK", str(own[0]), None)
    if needed.startswith(OWN_STEM):
        library = DebianPackage(OWN_STEM, version, "")
    elif needed.lower().endswith(".dll"):
        return None
    else:
        library = debian_packages.owner_of_shared_library(needed)
    return Link(str(user), "DYNAMIC_LINK", None, library)


def headers_of(program):
    packages = [debian_packages.owners(f"/usr/include/{header}")[0][0] for header in COMPILED_IN]
    return [Link(str(program), "STATIC_LINK", None, package) for package in packages]


def bundled(root, files):
    """The DLLs in the package that are not ours, each with the package that it was taken from."""
    foreign = [path for path in files if path.suffix == ".dll" and OWN_STEM not in path.name]
    return {str(path): debian_packages.owner_of_copy(root / path) for path in foreign}


def links(root, files, objdump, version):
    ours = [path for path in binaries(files) if OWN_STEM in path.name or path.name in PROGRAMS]
    found = []
    for user in ours:
        names = needed_names(root / user, objdump)
        found += [dynamic_link(user, name, files, version) for name in names]
        found += headers_of(user) if user.name in PROGRAMS else []
    return sorted({link for link in found if link}, key=str)

"""The Debian packages. As root, and where none of them is installed, dpkg installs them, they are
used as any package is, and they are taken away again; otherwise they are unpacked into a folder.

usage: check_debian.py PACKAGES WORK VERSION COMPILER
"""
import os
import pathlib
import shutil
import sys
import unittest

import package_support
from package_support import output

PACKAGES, WORK = (pathlib.Path(argument) for argument in sys.argv[1:3])
VERSION, COMPILER = sys.argv[3:5]
NAMES = ["libkestrel-dll64", "libkestrel-dll64-dev", "kestrel"]
FILES = [package_support.only(PACKAGES, f"{name}_{VERSION}_*.deb") for name in NAMES]


def can_install():
    known = [package_support.run("dpkg-query", "-W", name).returncode == 0 for name in NAMES]
    return os.geteuid() == 0 and not any(known)


def field(file, name):
    return output("dpkg-deb", "-f", file, name).strip()


class DebianPackages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(WORK, ignore_errors=True)
        WORK.mkdir(parents=True)
        cls.installed = can_install()
        print("installed by dpkg -i" if cls.installed else "unpacked by dpkg-deb -x")
        if cls.installed:
            cls.addClassCleanup(output, "dpkg", "--purge", *reversed(NAMES))
            output("dpkg", "-i", *FILES)
        for file in [] if cls.installed else FILES:
            output("dpkg-deb", "-x", file, WORK)
        prefix = pathlib.Path("/usr") if cls.installed else WORK / "usr"
        cls.use = package_support.Use(prefix, COMPILER)

    def test_the_program_runs(self):
        self.assertEqual(self.use.kestrel("--version").stdout.splitlines()[0], f"kestrel {VERSION}")

    def test_the_program_examines_a_file(self):
        self.assertEqual(self.use.inspect(package_support.LAYOUT), 0)
        self.assertEqual(self.use.inspect(package_support.OTHER_LAYOUT), 1)

    def test_its_binaries_are_protected(self):
        self.use.check_protection()

    def test_a_host_is_built_against_it(self):
        shown = self.use.run_service_map(WORK)
        self.assertEqual(shown, package_support.SERVICE_MAP_SHOWN)

    def test_a_package_of_a_host_learns_that_it_needs_the_library(self):
        if not self.installed:
            self.skipTest("dpkg knows of installed packages only")
        self.use.build_service_map(WORK / "service_map")
        (WORK / "debian").mkdir()
        (WORK / "debian/control").write_text("Source: host\n\nPackage: host\nArchitecture: any\n")
        found = output("dpkg-shlibdeps", "-O", WORK / "service_map", cwd=WORK)
        self.assertIn(f"libkestrel-dll64 (>= {VERSION})", found)

    def test_dpkg_finds_the_files_as_they_were_packed(self):
        if not self.installed:
            self.skipTest("dpkg knows of installed packages only")
        # Small systems are set up to leave documents out.
        differing = output("dpkg", "--verify", *NAMES).splitlines()
        self.assertEqual([line for line in differing if "/usr/share/" not in line], [])

    def test_the_documents_are_where_debian_has_them(self):
        for name, file in zip(NAMES, FILES):
            listed = output("dpkg-deb", "-c", file)
            for document in ["copyright", "changelog.gz", "CHANGELOG.md.gz",
                             f"{name}.spdx.json"]:
                self.assertIn(f" ./usr/share/doc/{name}/{document}\n", listed)
        for document in ["man/man1/kestrel.1.gz", "zsh/vendor-completions/_kestrel",
                         "bash-completion/completions/kestrel"]:
            self.assertIn(f" ./usr/share/{document}\n", listed)

    def test_the_packages_need_what_their_programs_are_linked_with(self):
        library, development, program = (field(file, "Depends") for file in FILES)
        self.assertRegex(library, r"\blibstdc\+\+6 \(>= ")
        self.assertEqual(development, f"libkestrel-dll64 (= {VERSION})")
        for needed in [f"libkestrel-dll64 (= {VERSION})", "libmediainfo0v5 (>= ", "libuv1 (>= ",
                       "libseccomp2 (>= "]:
            self.assertIn(needed, program)

    def test_the_packages_say_what_they_are(self):
        sections = [field(file, "Section") for file in FILES]
        self.assertEqual(sections, ["libs", "libdevel", "sound"])
        for file in FILES:
            synopsis = field(file, "Description").splitlines()[0]
            self.assertTrue(0 < len(synopsis) <= 80, synopsis)


unittest.main(argv=sys.argv[:1])

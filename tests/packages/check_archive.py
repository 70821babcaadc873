"""The archive: unpacked somewhere, its program runs and a host can be built against it.

usage: check_archive.py PACKAGES WORK VERSION COMPILER MEDIA_JSON [EMULATOR]
"""
import pathlib
import shutil
import sys
import unittest

import package_support

PACKAGES, WORK = (pathlib.Path(argument) for argument in sys.argv[1:3])
VERSION, COMPILER, MEDIA_JSON = sys.argv[3:6]
EMULATOR = " ".join(sys.argv[6:])
WINDOWS = bool(EMULATOR)


def unpacked():
    archive = package_support.only(PACKAGES, "*.zip" if WINDOWS else "*.tar.gz")
    shutil.rmtree(WORK, ignore_errors=True)
    shutil.unpack_archive(archive, WORK)
    prefix = package_support.only(WORK, f"kestrel-{VERSION}-*")
    if WINDOWS:
        return package_support.Use(prefix, COMPILER, EMULATOR, MEDIA_JSON)
    return package_support.Use(prefix, COMPILER)


class Archive(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.use = unpacked()

    def test_the_program_runs(self):
        self.assertEqual(self.use.kestrel("--version").stdout.splitlines()[0], f"kestrel {VERSION}")

    def test_the_program_examines_a_file(self):
        self.assertEqual(self.use.inspect(package_support.LAYOUT), 0)
        self.assertEqual(self.use.inspect(package_support.OTHER_LAYOUT), 1)

    @unittest.skipIf(WINDOWS, "the build tree's are the same")
    def test_its_binaries_are_protected(self):
        self.use.check_protection()

    def test_a_host_is_built_against_it(self):
        shown = self.use.run_service_map(WORK)
        self.assertEqual(shown, package_support.SERVICE_MAP_SHOWN)

    def test_it_says_what_is_in_it(self):
        documents = self.use.prefix / "share/doc/kestrel"
        self.assertIn("CLI11", (documents / "copyright").read_text(encoding="utf-8"))
        self.assertTrue((documents / "kestrel.spdx.json").exists())

    @unittest.skipUnless(WINDOWS, "Linux brings the run-time libraries")
    def test_the_program_needs_a_dll_that_only_another_dll_needs(self):
        library = self.use.prefix / "bin/libwinpthread-1.dll"
        aside = library.rename(library.with_suffix(".aside"))
        try:
            self.assertNotEqual(self.use.kestrel("--version").returncode, 0)
        finally:
            aside.rename(library)


unittest.main(argv=sys.argv[:1])

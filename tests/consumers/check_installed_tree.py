"""The installed tree: what each component holds, that it can be moved, that nothing in it names a
folder of the machine that built it.

usage: check_installed_tree.py BUILD TREE WORK VERSION linux|windows [UNITTEST_OPTION...]
"""
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import unittest

BUILD, TREE, WORK = (pathlib.Path(argument) for argument in sys.argv[1:4])
VERSION, PLATFORM = sys.argv[4:6]
SOURCE = pathlib.Path(__file__).resolve().parents[2]
EMULATOR = shlex.split(os.environ.get("EMULATOR", ""))

HEADERS = [f"include/kestrel/{path.name}" for path in (SOURCE / "api").glob("*.h")]
DEVELOPMENT = [
    *HEADERS,
    "include/kestrel/kestrel_version.h",
    "lib/cmake/kestrel/kestrel-config-version.cmake",
    "lib/cmake/kestrel/kestrel-config.cmake",
    "lib/cmake/kestrel/kestrel-targets-release.cmake",
    "lib/cmake/kestrel/kestrel-targets.cmake",
    "lib/pkgconfig/kestrel.pc",
]
FILES = {
    "linux": {
        "runtime": ["lib/libkestrel-dll64.so"],
        "development": DEVELOPMENT,
        "host": [
            "bin/kestrel",
            "share/bash-completion/completions/kestrel",
            "share/man/man1/kestrel.1",
            "share/zsh/site-functions/_kestrel",
        ],
    },
    "windows": {
        "runtime": ["bin/libkestrel-dll64.dll"],
        "development": [*DEVELOPMENT, "lib/libkestrel-dll64.dll.a"],
        "host": ["bin/kestrel.exe"],
    },
}[PLATFORM]


def files_in(folder):
    return sorted(
        path.relative_to(folder).as_posix()
        for path in folder.rglob("*")
        if path.is_symlink() or not path.is_dir()
    )


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def installed(build, component):
    folder = WORK / component
    shutil.rmtree(folder, ignore_errors=True)
    run("cmake", "--install", build, "--component", component, "--prefix", folder)
    return files_in(folder)


class InstalledTree(unittest.TestCase):
    def test_each_component_holds_its_files(self):
        for component, files in FILES.items():
            with self.subTest(component):
                self.assertEqual(installed(BUILD, component), sorted(files))

    def test_all_components_are_all_that_is_installed(self):
        self.assertEqual(files_in(TREE), sorted(sum(FILES.values(), [])))

    def test_no_file_names_a_folder_of_this_machine(self):
        # The build folder need not stand in the source folder, nor the prefix in either.
        folders = [re.escape(os.fsencode(folder)) for folder in (SOURCE, BUILD, TREE.parent)]
        # A folder "/kestrel" is not meant by "lib/cmake/kestrel".
        begins, ends = rb"(?:(?<![\w.})/-])|(?<=-[ILF]))", rb"(?![\w.-])"
        named = re.compile(begins + rb"(?:" + b"|".join(folders) + rb")" + ends)
        for name in files_in(TREE):
            self.assertFalse(named.findall((TREE / name).read_bytes()), name)

    def test_the_version_is_the_projects(self):
        pkgconfig = (TREE / "lib/pkgconfig/kestrel.pc").read_text()
        self.assertIn(f"\nVersion: {VERSION}\n", pkgconfig)
        header = (TREE / "include/kestrel/kestrel_version.h").read_text()
        self.assertIn(f'#define KESTREL_VERSION "{VERSION}"', header)
        program = TREE / FILES["host"][0]
        self.assertEqual(run(*EMULATOR, program, "--version").splitlines()[0], f"kestrel {VERSION}")

    @unittest.skipUnless(PLATFORM == "linux", "the same on every platform")
    def test_without_the_host_nothing_of_it_is_installed(self):
        build = WORK / "without_host"
        run("cmake", "-S", SOURCE, "-B", build, "-DKESTREL_BUILD_HOST=OFF",
            "-DKESTREL_BUILD_TESTS=OFF")
        self.assertEqual(installed(build, "host"), [])
        self.assertIn("include/kestrel/kestrel.h", installed(build, "development"))


unittest.main(argv=sys.argv[:1] + sys.argv[6:])

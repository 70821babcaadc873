"""Every quick line of the release check holds in a tree that is ready, and fails in a copy that has
one thing wrong, naming the place. A run of the whole script prints each line and ends by them.

usage: check_release_check.py ROOT WORK
"""
import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

ROOT, WORK = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
sys.path.insert(0, str(ROOT / "scripts"))
import release_check  # noqa: E402

VERSION = release_check.Tree(ROOT).version()
FILES = ["CMakeLists.txt", "CHANGELOG.md", "CONTRIBUTING.md", "packaging", "cmake", "docs",
         "scripts", "bindings", "tests/consumers", "tests/abi"]
OTHER = "7.8.9"

# The line that then fails, the file, what stands there (a pattern), what is put in its place.
FAULTS = [
    (release_check.same_version, "CMakeLists.txt", rf"VERSION {VERSION}", f"VERSION {OTHER}"),
    (release_check.same_version, "CHANGELOG.md", rf"## {VERSION}", f"## {OTHER}"),
    (release_check.same_version, "CHANGELOG.md", r"\n## .*", ""),
    (release_check.same_version, "packaging/vcpkg/kestrel/vcpkg.json", VERSION, OTHER),
    (release_check.same_version, "packaging/conan/conanfile.py", r"VERSION\\s", r"VERSIONS\\s"),
    (release_check.same_version, "packaging/finish.cmake", r"\${CPACK_PACKAGE_VERSION}", VERSION),
    (release_check.same_version, "cmake/KestrelPackages.cmake",
     r"CPACK_PACKAGE_VERSION \${PROJECT_VERSION}", f"CPACK_PACKAGE_VERSION {OTHER}"),
    (release_check.same_version, "cmake/kestrel_version.h.in", "@PROJECT_VERSION@", OTHER),
    (release_check.same_version, "cmake/kestrel.pc.in", "@PROJECT_VERSION@", VERSION),
    (release_check.same_version, "bindings/python/pyproject.toml", r'dynamic = \["version"\]',
     f'version = "{VERSION}"'),
    (release_check.same_version, "bindings/python/setup.py", r"project\\\(kestrel", r"project\\(x"),
    (release_check.same_version, "docs/Doxyfile.in", "@VERSION@", VERSION),
    (release_check.same_version, "docs/install.md", r"\(kestrel [0-9.]+", "(kestrel 7.8"),
    (release_check.same_version, "docs/man/kestrel.1", r"\Z", f"\nKestrel {OTHER}\n"),
    (release_check.same_version, "tests/consumers/find_package/CMakeLists.txt",
     r"\(kestrel [0-9.]+", "(kestrel 7.8"),
    (release_check.same_version, "tests/consumers/find_package_cxx/CMakeLists.txt",
     r"\(kestrel [0-9.]+", "(kestrel 7.8"),
    (release_check.dated_entry, "CHANGELOG.md", r"\n## .*", "\n## Unreleased"),
    (release_check.dated_entry, "CHANGELOG.md", r"\(\d{4}-\d\d", "(2020-13"),
    (release_check.dated_entry, "CHANGELOG.md", r"\(\d{4}", "(9999"),
    (release_check.raised_for_interface, "tests/abi/baseline/README.md", r"as of version [0-9.]+\d",
     f"as of version {OTHER}"),
    (release_check.raised_for_interface, "tests/abi/baseline/api/kestrel_version.h",
     r'(KESTREL_VERSION ")[0-9.]+', rf"\g<1>{OTHER}"),
    (release_check.no_leftovers, "docs/design.md", r"\Z", "TO" "DO: say more\n"),
    (release_check.no_leftovers, "scripts/demo.sh", r"\Z", "cd /home/" "me\n"),
    (release_check.no_leftovers, "scripts/demo.sh", r"\Z", f"cd {WORK}/ready\n"),
    (release_check.chosen_licence, "packaging/vcpkg/kestrel/vcpkg.json", '"licence"|"X"', "null"),
    (release_check.chosen_licence, "packaging/copyright", r"\A", "No licence has been chosen yet."),
]


def change(tree, file, pattern, replacement):
    path = tree / file
    text, times = re.subn(pattern, replacement, path.read_text(encoding="utf-8"), count=1)
    if times == 0:
        raise AssertionError(f"{file} does not hold {pattern}")
    path.write_text(text, encoding="utf-8")


@contextlib.contextmanager
def changed(file, pattern, replacement):
    path = READY / file
    before = path.read_bytes()
    try:
        change(READY, file, pattern, replacement)
        yield
    finally:
        path.write_bytes(before)


def git(*arguments):
    who = ["-c", "user.name=Tester", "-c", "user.email=tester@kestrel.test"]
    subprocess.run(["git", *who, *arguments], cwd=READY, check=True, capture_output=True)


def make_ready():
    """A copy in which all is decided, committed and agreed."""
    shutil.rmtree(READY, ignore_errors=True)
    for name in FILES:
        source, target = ROOT / name, READY / name
        target.parent.mkdir(parents=True, exist_ok=True)
        copy = shutil.copytree if source.is_dir() else shutil.copy
        copy(source, target)
    change(READY, "CHANGELOG.md", r"\n## .*", f"\n## {VERSION} (2020-02-29)")
    change(READY, "packaging/vcpkg/kestrel/vcpkg.json", r'"license": \S+,', '"license": "X",')
    change(READY, "packaging/copyright", r"(?m)^.*licence.*$", "Under the licence X.")
    change(READY, "cmake/KestrelPackages.cmake", r'CONTACT ".*"', 'CONTACT "Us <us@kestrel.test>"')
    (READY / "LICENSE").write_text("X\n", encoding="utf-8")
    (READY / ".gitignore").write_text("/build/\n__pycache__/\n", encoding="utf-8")
    git("init", "--quiet")
    git("add", "--all")
    git("commit", "--quiet", "--message", "ready")


READY = WORK / "ready"


@contextlib.contextmanager
def tools(script):
    """In the place of cmake and ctest."""
    before = os.environ["PATH"]
    folder = WORK / "tools"
    folder.mkdir(exist_ok=True)
    for name in ["cmake", "ctest"]:
        (folder / name).write_text(f"#!/bin/sh\n{script}\n", encoding="utf-8")
        (folder / name).chmod(0o755)
    os.environ["PATH"] = f"{folder}:{before}"
    try:
        yield
    finally:
        os.environ["PATH"] = before


class ReleaseCheck(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        make_ready()

    def setUp(self):
        self.tree = release_check.Tree(READY)

    def judge(self, check):
        return release_check.judged(self.tree, check)

    def test_every_quick_line_about_files_is_done_where_all_is_ready(self):
        checks = {check for check, *_ in FAULTS}
        checks |= {release_check.clean_tree, release_check.free_tag,
                   release_check.maintainers_address}
        for check in checks:
            self.assertEqual(self.judge(check)[0], "done", self.judge(check))
        quick = {check for _, check in release_check.QUICK}
        self.assertEqual(quick - checks, {release_check.structure_picture})

    def test_each_fault_is_named_with_its_place(self):
        for check, file, pattern, replacement in FAULTS:
            with self.subTest(file=file, replacement=replacement):
                with changed(file, pattern, replacement):
                    word, said = self.judge(check)
                self.assertEqual(word, "failed", said)
                self.assertIn(file, said)

    def test_every_place_of_the_version_has_a_fault(self):
        places = {*release_check.STATED, *release_check.STATED_IN_SHORT, *release_check.DERIVED,
                  *release_check.READING}
        tried = {file for check, file, *_ in FAULTS if check == release_check.same_version}
        self.assertEqual(places | {"CMakeLists.txt"}, tried)

    def test_what_nobody_has_decided_is_open(self):
        (READY / "LICENSE").rename(WORK / "LICENSE")
        with changed("packaging/vcpkg/kestrel/vcpkg.json", '"X"', "null"):
            self.assertEqual(self.judge(release_check.chosen_licence),
                             ("open", "open: no licence chosen"))
        (WORK / "LICENSE").rename(READY / "LICENSE")
        with changed("cmake/KestrelPackages.cmake", "us@kestrel.test", "us@localhost"):
            self.assertEqual(self.judge(release_check.maintainers_address)[0], "open")

    def test_a_file_that_is_not_committed_fails(self):
        (READY / "new.txt").write_text("new\n", encoding="utf-8")
        self.assertEqual(self.judge(release_check.clean_tree), ("failed", "not committed: new.txt"))
        (READY / "new.txt").unlink()

    def test_a_tag_on_an_earlier_commit_and_an_interface_changed_since_fail(self):
        git("tag", f"v{VERSION}")
        self.assertEqual(self.judge(release_check.free_tag),
                         ("done", f"v{VERSION} is on this commit"))
        (READY / release_check.BASELINE).write_text("another\n", encoding="utf-8")
        git("commit", "--quiet", "--all", "--message", "another interface")
        self.assertEqual(self.judge(release_check.free_tag)[0], "failed")
        word, said = self.judge(release_check.raised_for_interface)
        self.assertEqual((word, said.split()[0]), ("failed", release_check.BASELINE))
        raised = re.sub(r"\d+\.\d+$", lambda m: f"{int(m[0].split('.')[0]) + 1}.0", VERSION)
        with changed("CMakeLists.txt", rf"VERSION {VERSION}", f"VERSION {raised}"):
            self.assertEqual(self.judge(release_check.raised_for_interface),
                             ("done", f"raised since v{VERSION}"))
        git("reset", "--quiet", "--hard", "HEAD^")
        git("tag", "--delete", f"v{VERSION}")

    def test_what_is_open_fails_unless_it_is_allowed(self):
        self.assertEqual(release_check.exit_code(["done", "left out"], False), 0)
        self.assertEqual(release_check.exit_code(["done", "open"], False), 1)
        self.assertEqual(release_check.exit_code(["done", "open"], True), 0)
        self.assertEqual(release_check.exit_code(["failed", "open"], True), 1)

    def test_a_long_line_is_what_its_command_says(self):
        with tools("echo '100% tests passed, 0 tests failed out of 5'"):
            self.assertEqual(self.judge(release_check.packages), ("done", "5 tests"))
        with tools("exit 1"):
            self.assertEqual(self.judge(release_check.packages),
                             ("failed", "see build/release-check/packages-configure.log"))
        with tools('[ "$1" != --test-dir ]'):
            self.assertEqual(self.judge(release_check.packages),
                             ("failed", "see build/release-check/packages.log"))

    def test_the_script_prints_every_line_and_ends_by_them(self):
        run = [sys.executable, "-B", READY / "scripts" / "release_check.py", "--quick"]
        ran = subprocess.run(run, capture_output=True, text=True, check=False)
        # The copy lacks most folders, so the picture is not that of its structure.
        failed = re.findall(r"^failed +(.*?)  ", ran.stdout, re.MULTILINE)
        self.assertEqual(failed, ["the picture of the structure is up to date"])
        self.assertEqual(ran.returncode, 1)
        for title, _ in release_check.QUICK + release_check.LONG + release_check.BY_HAND:
            self.assertIn(f" {title} ", ran.stdout)
        self.assertEqual(ran.stdout.count("\nleft out "), len(release_check.LONG))


unittest.main(argv=sys.argv[:1])

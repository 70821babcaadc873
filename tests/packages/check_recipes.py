"""What can be said of the vcpkg port and the Conan recipe without vcpkg and Conan.

usage: check_recipes.py WORK VERSION
"""
import ast
import json
import pathlib
import re
import shutil
import sys
import unittest

from package_support import SOURCE, output

WORK, VERSION = pathlib.Path(sys.argv[1]), sys.argv[2]
PORT = SOURCE / "packaging/vcpkg/kestrel"
RECIPE = (SOURCE / "packaging/conan/conanfile.py").read_text(encoding="utf-8")
PROJECT = (SOURCE / "CMakeLists.txt").read_text(encoding="utf-8")
OPTIONS = ["-DKESTREL_BUILD_HOST=OFF", "-DKESTREL_BUILD_TESTS=OFF"]


def nodes(kind):
    return [node for node in ast.walk(ast.parse(RECIPE)) if isinstance(node, kind)]


def parts():
    """The files that the recipe copies."""
    values = [node.value for node in nodes(ast.Assign) if ast.unparse(node.targets[0]) == "PARTS"]
    return ast.literal_eval(values[0])


def version_pattern():
    calls = [node for node in nodes(ast.Call) if ast.unparse(node.func) == "re.search"]
    return ast.literal_eval(calls[0].args[0])


def copied():
    shutil.rmtree(WORK, ignore_errors=True)
    for part in parts():
        for path in SOURCE.glob(part):
            target = WORK / "source" / path.relative_to(SOURCE)
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(path, target)
    return WORK / "source"


class Recipes(unittest.TestCase):
    def test_the_versions_are_the_projects(self):
        port = json.loads((PORT / "vcpkg.json").read_text(encoding="utf-8"))
        self.assertEqual(port["version"], VERSION)
        self.assertEqual(re.search(version_pattern(), PROJECT)[1], VERSION)

    def test_the_port_builds_the_library_alone(self):
        text = (PORT / "portfile.cmake").read_text(encoding="utf-8")
        self.assertEqual(re.findall(r"-DKESTREL_\w+=\w+", text), OPTIONS)
        for option in OPTIONS:
            self.assertIn(f"option({option[2:].split('=')[0]} ", PROJECT)
        place = re.search(r'\$\{CMAKE_CURRENT_LIST_DIR\}/([./]+)"', text)[1]
        self.assertEqual((PORT / place).resolve(), SOURCE)

    def test_the_files_that_the_recipe_copies_are_enough(self):
        build = WORK / "build"
        output("cmake", "-S", copied(), "-B", build, "-G", "Ninja", *OPTIONS)
        output("cmake", "--install", build, "--component", "development", "--prefix", WORK / "tree")
        self.assertTrue((WORK / "tree/include/kestrel/kestrel.h").exists())


unittest.main(argv=sys.argv[:1])

"""Every package holds an SPDX list of itself that is true.

usage: check_lists.py PACKAGES WORK
"""
import copy
import json
import pathlib
import shutil
import sys
import unittest

import package_support
import spdx_rules

PACKAGES, WORK = (pathlib.Path(argument) for argument in sys.argv[1:3])


def unpacked(package):
    """The folder of the package's own root."""
    folder = WORK / package.name
    if package.suffix == ".deb":
        package_support.output("dpkg-deb", "-x", package, folder)
        return folder
    shutil.unpack_archive(package, folder)
    return package_support.only(folder, "kestrel-*")


def list_in(root):
    path = package_support.only(root, "**/*.spdx.json")
    listed = f"./{path.relative_to(root).as_posix()}"
    return json.loads(path.read_text(encoding="utf-8")), root, listed


def linked(content, kind):
    return {one["relatedSpdxElement"] for one in content["relationships"]
            if one["relationshipType"] == kind}


class Lists(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(WORK, ignore_errors=True)
        packages = [path for path in PACKAGES.iterdir() if path.is_file()]
        cls.lists = {path.name: list_in(unpacked(path)) for path in sorted(packages)}

    def archive(self):
        """The list of the package that holds everything, and where it lies."""
        content, root, listed = next(
            found for name, found in self.lists.items() if name.endswith((".tar.gz", ".zip")))
        return copy.deepcopy(content), root, listed

    def test_every_list_is_true(self):
        for name, found in self.lists.items():
            with self.subTest(name):
                self.assertEqual(spdx_rules.problems(*found), [])

    def test_the_libraries_are_named(self):
        content = self.archive()[0]
        self.assertIn("SPDXRef-Library-nlohmann-json3-dev", linked(content, "STATIC_LINK"))
        self.assertTrue(any("libkestrel-dll64" in one for one in linked(content, "DYNAMIC_LINK")))
        self.assertTrue(any("libstdc" in one for one in linked(content, "DYNAMIC_LINK")))

    def test_a_list_that_is_not_true_is_noticed(self):
        def other_checksum(content):
            content["files"][0]["checksums"][0]["checksumValue"] = "0" * 40

        def other_code(content):
            code = content["packages"][0]["packageVerificationCode"]
            code["packageVerificationCodeValue"] = "0" * 40

        def same_id(content):
            content["packages"].append(content["packages"][1])

        changes = {
            "a file is missing": lambda content: content["files"].pop(),
            "a checksum is another": other_checksum,
            "the code is another": other_code,
            "a field is missing": lambda content: content.pop("dataLicense"),
            "a field is unknown": lambda content: content.update(colour="red"),
            "an id stands twice": same_id,
            "an end is missing": lambda content: content["packages"].pop(),
        }
        for name, change in changes.items():
            with self.subTest(name):
                content, root, listed = self.archive()
                change(content)
                self.assertNotEqual(spdx_rules.problems(content, root, listed), [])


unittest.main(argv=sys.argv[:1])

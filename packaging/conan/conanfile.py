"""Conan 2 recipe: the library, from the checkout that this recipe stands in.

NOT RUN HERE: Conan is in no Debian 12 package. See packaging/README.md.
"""

import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load

PARTS = ["CMakeLists.txt", "analyser/*", "api/*", "catalogue/*", "cmake/*", "plain_c/*",
         "standards/*"]


class KestrelConan(ConanFile):
    name = "kestrel"
    description = "Knows and checks which audio services a media file carries on its tracks"
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"

    def _checkout(self):
        return os.path.join(self.recipe_folder, "..", "..")

    def set_version(self):
        text = load(self, os.path.join(self._checkout(), "CMakeLists.txt"))
        self.version = re.search(r"project\(kestrel\s+VERSION\s+([0-9.]+)", text)[1]

    def export_sources(self):
        for part in PARTS:
            copy(self, part, self._checkout(), self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def validate(self):
        check_min_cppstd(self, 20)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        for option in ["BUILD_HOST", "BUILD_TESTS"]:
            toolchain.cache_variables[f"KESTREL_{option}"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        self.cpp_info.libs = ["libkestrel-dll64" if self.settings.compiler == "msvc"
                              else "kestrel-dll64"]
        self.cpp_info.set_property("cmake_file_name", "kestrel")
        self.cpp_info.set_property("cmake_target_name", "kestrel::kestrel")
        self.cpp_info.set_property("pkg_config_name", "kestrel")

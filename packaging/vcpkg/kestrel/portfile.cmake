# Overlay port: the library, from the checkout that this port stands in.
# NOT RUN HERE: vcpkg is in no Debian package. See packaging/README.md.
vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS -DKESTREL_BUILD_HOST=OFF -DKESTREL_BUILD_TESTS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/kestrel)
vcpkg_fixup_pkgconfig()
vcpkg_copy_pdbs()

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/packaging/copyright")

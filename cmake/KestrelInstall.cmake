# What is installed, and where. Three components: `runtime` (the library), `development` (headers,
# import library, CMake package, pkg-config file) and `host` (the program, its manual page and its
# completions). Paths between installed files are relative, so that an installed tree can be moved.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(kestrel_package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/kestrel)
set(kestrel_pkgconfig_directory ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The way from one installed directory to another, also where a packager gave absolute ones.
function(kestrel_way from to result)
  GNUInstallDirs_get_absolute_install_dir(absolute_from from LIBDIR)
  GNUInstallDirs_get_absolute_install_dir(absolute_to to LIBDIR)
  file(RELATIVE_PATH way ${absolute_from} ${absolute_to})
  string(REGEX REPLACE "/$" "" way ${way})
  set(${result} ${way} PARENT_SCOPE)
endfunction()

function(kestrel_install_library)
  # No VERSION and no SOVERSION: hosts load the library by its one name, see docs/install.md.
  install(TARGETS kestrel EXPORT kestrel-targets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(FILES ${kestrel_public_headers}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kestrel COMPONENT development)
endfunction()

function(kestrel_install_cmake_package)
  # Before 1.0 a new minor version may break what the last one promised.
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/kestrel-config-version.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES
    ${PROJECT_SOURCE_DIR}/cmake/kestrel-config.cmake
    ${PROJECT_BINARY_DIR}/kestrel-config-version.cmake
    DESTINATION ${kestrel_package_directory} COMPONENT development)
  install(EXPORT kestrel-targets NAMESPACE kestrel::
    DESTINATION ${kestrel_package_directory} COMPONENT development)
endfunction()

function(kestrel_install_pkgconfig_file)
  kestrel_way(${kestrel_pkgconfig_directory} ${CMAKE_INSTALL_INCLUDEDIR} way_to_headers)
  kestrel_way(${kestrel_pkgconfig_directory} ${CMAKE_INSTALL_LIBDIR} way_to_library)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/kestrel.pc.in ${PROJECT_BINARY_DIR}/kestrel.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/kestrel.pc
    DESTINATION ${kestrel_pkgconfig_directory} COMPONENT development)
endfunction()

function(kestrel_install_host)
  kestrel_way(${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_LIBDIR} way_to_library)
  # The way in the build tree ("..") is in the installed program too: where the two differ, CMake ends
  # the program's run path with a colon, and an empty entry stands for the current folder.
  set_target_properties(kestrel_host PROPERTIES
    INSTALL_RPATH $ORIGIN:$ORIGIN/${way_to_library}:$ORIGIN/..
    BUILD_WITH_INSTALL_RPATH ON)
  install(TARGETS kestrel_host DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT host)
  if(WIN32)
    return()
  endif()
  install(FILES ${PROJECT_SOURCE_DIR}/docs/man/kestrel.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT host)
  install(FILES ${PROJECT_SOURCE_DIR}/host/completions/kestrel.bash RENAME kestrel
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT host)
  install(FILES ${PROJECT_SOURCE_DIR}/host/completions/_kestrel
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT host)
endfunction()

kestrel_install_library()
kestrel_install_cmake_package()
kestrel_install_pkgconfig_file()
# A host that is built only when it is asked for may not be there.
set(kestrel_installs_host OFF)
if(KESTREL_BUILD_HOST AND KESTREL_TEST_HOST)
  set(kestrel_installs_host ON)
  kestrel_install_host()
endif()

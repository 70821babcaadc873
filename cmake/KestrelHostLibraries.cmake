# The libraries of the command-line host, as one target kestrel_host_libraries.
add_library(kestrel_host_libraries INTERFACE)

if(CMAKE_CROSSCOMPILING)
  # Debian has no MinGW packages of these, but they work as headers alone. A directory of their own
  # keeps the rest of /usr/include out of sight of the cross compiler.
  set(header_directory ${CMAKE_CURRENT_BINARY_DIR}/host_headers)
  file(MAKE_DIRECTORY ${header_directory})
  foreach(library IN ITEMS CLI fmt kainjow nlohmann)
    if(NOT EXISTS /usr/include/${library})
      message(FATAL_ERROR "/usr/include/${library} is missing (run scripts/setup.sh)")
    endif()
    file(CREATE_LINK /usr/include/${library} ${header_directory}/${library} SYMBOLIC)
  endforeach()
  target_include_directories(kestrel_host_libraries SYSTEM INTERFACE ${header_directory})
  target_compile_definitions(kestrel_host_libraries INTERFACE FMT_HEADER_ONLY)
  return()
endif()

find_package(CLI11 REQUIRED)
find_package(fmt REQUIRED)
find_package(nlohmann_json REQUIRED)
find_path(KESTREL_MUSTACHE_INCLUDE kainjow/mustache.hpp REQUIRED)
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(libmediainfo REQUIRED IMPORTED_TARGET libmediainfo)
pkg_check_modules(libuv REQUIRED IMPORTED_TARGET libuv)
pkg_check_modules(libseccomp REQUIRED IMPORTED_TARGET libseccomp)

# libmediainfo.pc names directories of its own build (GLib's) that need not be there.
get_target_property(directories PkgConfig::libmediainfo INTERFACE_INCLUDE_DIRECTORIES)
set(existing_directories)
foreach(directory IN LISTS directories)
  if(EXISTS ${directory})
    list(APPEND existing_directories ${directory})
  endif()
endforeach()
set_target_properties(PkgConfig::libmediainfo PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES "${existing_directories}")

target_link_libraries(kestrel_host_libraries INTERFACE
  CLI11::CLI11 fmt::fmt nlohmann_json::nlohmann_json PkgConfig::libmediainfo PkgConfig::libuv
  PkgConfig::libseccomp Threads::Threads)

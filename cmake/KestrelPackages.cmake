# The packages that CPack makes: for Linux one archive and Debian packages, one for each component
# of KestrelInstall.cmake; for Windows one archive. What is not there to be installed (third parties'
# notices, the list of what is shipped, the run-time DLLs) packaging/finish.cmake adds. It asks
# Debian's package database, so packages are made on Debian, those for Windows by MinGW-w64.
if(MSVC)
  return()
endif()
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(KESTREL_PACKAGE_CONTACT "Kestrel maintainers <kestrel@localhost>"
  CACHE STRING "Whom the packages name as their maintainer")

set(CPACK_PACKAGE_NAME kestrel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${KESTREL_PACKAGE_CONTACT})
set(CPACK_PACKAGE_VENDOR Kestrel)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(kestrel_installs_host)
  list(APPEND CPACK_COMPONENTS_ALL host)
endif()
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/finish.cmake)
set(CPACK_KESTREL_OBJDUMP ${CMAKE_OBJDUMP})
set(CPACK_KESTREL_PYTHON ${Python3_EXECUTABLE})

function(kestrel_debian_package component name section words)
  string(TOUPPER ${component} key)
  set(package CPACK_DEBIAN_${key}_PACKAGE)
  set(${package}_NAME ${name} PARENT_SCOPE)
  set(${package}_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "Mono channels, stereo pairs, 5.1 and 7.1 mixes, Dolby E
pairs, and in which order. This package holds ${words}." PARENT_SCOPE)
endfunction()

# From the symbols file other packages learn which of ours they need.
function(kestrel_debian_symbols file)
  file(STRINGS ${PROJECT_SOURCE_DIR}/api/exported_names.txt names)
  list(TRANSFORM names REPLACE "(.+)" " \\1@Base ${PROJECT_VERSION}")
  list(JOIN names "\n" names)
  file(CONFIGURE OUTPUT ${file} CONTENT
    "libkestrel-dll64.so libkestrel-dll64 (>= @PROJECT_VERSION@)\n@names@\n" @ONLY)
endfunction()

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME kestrel-${PROJECT_VERSION}-windows-x86_64)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-search-dirs
    OUTPUT_VARIABLE directories COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*libraries: =([^\n]*).*" "\\1" directories ${directories})
  string(REPLACE ":" ";" CPACK_KESTREL_DLL_DIRECTORIES ${directories})
else()
  set(CPACK_GENERATOR TGZ DEB)
  set(CPACK_PACKAGE_FILE_NAME kestrel-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
  set(same_version "libkestrel-dll64 (= ${PROJECT_VERSION})")
  kestrel_debian_package(runtime libkestrel-dll64 libs "the library")
  kestrel_debian_package(development libkestrel-dll64-dev libdevel "what is needed to
build against the library")
  kestrel_debian_package(host kestrel sound "the program")
  kestrel_debian_symbols(${PROJECT_BINARY_DIR}/debian/symbols)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/symbols)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${same_version})
  set(CPACK_DEBIAN_HOST_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS ${same_version})
endif()
include(CPack)

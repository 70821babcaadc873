# The project's own cross-building, but packages are also looked for in CMAKE_PREFIX_PATH.
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/mingw-w64-x86_64.cmake)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# Copies into FOLDER the DLLs that the programs and DLLs there need, and those that these need, as
# OBJDUMP tells, from DIRECTORIES. What Windows itself brings stays out; anything else that is not
# found is an error.
file(GLOB programs ${FOLDER}/*.exe)
file(GLOB libraries ${FOLDER}/*.dll)
set(CMAKE_GET_RUNTIME_DEPENDENCIES_PLATFORM windows+pe)
set(CMAKE_GET_RUNTIME_DEPENDENCIES_TOOL objdump)
set(CMAKE_GET_RUNTIME_DEPENDENCIES_COMMAND ${OBJDUMP})
file(GET_RUNTIME_DEPENDENCIES
  EXECUTABLES ${programs}
  LIBRARIES ${libraries}
  DIRECTORIES ${DIRECTORIES}
  RESOLVED_DEPENDENCIES_VAR found
  PRE_EXCLUDE_REGEXES
    "^(advapi32|kernel32|msvcrt|ntdll|shell32|user32|ws2_32|ucrtbase)\\.dll$" "^api-ms-win-")
list(FILTER found EXCLUDE REGEX "^${FOLDER}/")
foreach(library IN LISTS found)
  file(COPY ${library} DESTINATION ${FOLDER} FOLLOW_SYMLINK_CHAIN)
endforeach()

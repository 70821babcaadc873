# One way to make a test program of GoogleTest sources.
#
# kestrel_add_test(NAME SOURCES... [LIBRARIES ...] [DEFINITIONS ...] [DEPENDS target...]
#                  [LABELS ...] [TIMEOUT seconds])
#
# On the build machine each test of the program becomes a ctest entry; when cross-building the
# program is one entry, since a start under Wine costs much more than most tests. Names begin with
# the preset, so that one ctest run can hold the tests of several builds.
include(GoogleTest)

set(KESTREL_TEST_PREFIX "build" CACHE STRING "What the names of the tests begin with")

set(KESTREL_TEST_ROUNDS 100 CACHE STRING "How many of their random inputs the tests try, in percent")

function(kestrel_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS;DEFINITIONS;DEPENDS")
  # Under the thread sanitizer only tests with threads are of interest.
  if(KESTREL_SANITIZE STREQUAL "thread" AND NOT "threads" IN_LIST arg_LABELS)
    return()
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  add_executable(${name} ${arg_SOURCES} ${arg_UNPARSED_ARGUMENTS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
  kestrel_target_options(${name})
  if(arg_DEPENDS)
    add_dependencies(${name} ${arg_DEPENDS})
  endif()
  set(environment KESTREL_TEST_ROUNDS=${KESTREL_TEST_ROUNDS})
  set(properties TIMEOUT ${arg_TIMEOUT})
  if(arg_LABELS)  # gtest_discover_tests() drops an empty value, not its name
    list(APPEND properties LABELS "${arg_LABELS}")
  endif()
  if(CMAKE_CROSSCOMPILING)
    list(APPEND environment WINEPATH=$<TARGET_FILE_DIR:kestrel>)  # where the DLL is
    add_test(NAME ${KESTREL_TEST_PREFIX}/${name} COMMAND ${name})
    set_tests_properties(${KESTREL_TEST_PREFIX}/${name} PROPERTIES
      ${properties} ENVIRONMENT "${environment}")
  else()
    gtest_discover_tests(${name}
      TEST_PREFIX ${KESTREL_TEST_PREFIX}/
      DISCOVERY_TIMEOUT 60
      PROPERTIES ${properties} ENVIRONMENT "${environment}")
  endif()
endfunction()

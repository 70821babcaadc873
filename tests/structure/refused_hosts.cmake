# Hosts whose standard library is not the one that the library was built with: the C++ headers refuse
# them with a sentence, and the plain C header takes them all.
set(api ${PROJECT_SOURCE_DIR}/api)

# kestrel_refuses(NAME HEADER SENTENCE OPTIONS...)
function(kestrel_refuses name header sentence)
  set(test ${KESTREL_TEST_PREFIX}/headers_refuse_${name})
  add_test(NAME ${test} COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 -fsyntax-only -x c++
    ${ARGN} -I${PROJECT_BINARY_DIR}/generated ${api}/${header})
  set_tests_properties(${test} PROPERTIES PASS_REGULAR_EXPRESSION "error: .*${sentence}")
endfunction()

if(KESTREL_STANDARD_LIBRARY STREQUAL "LIBSTDCXX")
  kestrel_refuses(debug_containers service_map.h "kestrel: .*-D_GLIBCXX_DEBUG" -D_GLIBCXX_DEBUG)
  kestrel_refuses(old_strings service_map.h "kestrel: .*-D_GLIBCXX_USE_CXX11_ABI=0"
    -D_GLIBCXX_USE_CXX11_ABI=0)
endif()

# The version header of a library that was built with another standard library than the host's.
foreach(library LIBSTDCXX MSVC)
  if(NOT library STREQUAL KESTREL_STANDARD_LIBRARY)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/built_with_${library})
    file(CONFIGURE OUTPUT ${folder}/kestrel_version.h
      CONTENT "#define KESTREL_STANDARD_LIBRARY_@library@ 1\n" @ONLY)
    foreach(header catalogue ebu_r123 layout_code service_map stream_naming)
      kestrel_refuses(${library}_in_${header} ${header}.h "kestrel: .*kestrel\\.h" -I${folder})
    endforeach()
  endif()
endforeach()

# A host of Microsoft's compiler: clang compiles for it, and brings the headers that kestrel.h needs.
find_program(KESTREL_CLANG NAMES clang-16 clang)
mark_as_advanced(KESTREL_CLANG)
if(KESTREL_CLANG)
  foreach(language c c++)
    add_test(NAME ${KESTREL_TEST_PREFIX}/plain_c_header_compiles_for_msvc_as_${language}
      COMMAND ${KESTREL_CLANG} --target=x86_64-pc-windows-msvc -ffreestanding -fsyntax-only
        -Wall -Wextra -pedantic -Werror -x ${language}
        -I${api} -I${PROJECT_BINARY_DIR}/generated ${CMAKE_CURRENT_SOURCE_DIR}/plain_c_host.c)
  endforeach()
endif()

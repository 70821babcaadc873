# Warnings, language level and sanitizers, as properties of one target at a time.
function(kestrel_target_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /utf-8 /permissive- /Zc:__cplusplus)
    return()
  endif()
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Wcast-align -Woverloaded-virtual -Wundef)
  if(PROJECT_IS_TOP_LEVEL)
    # A project that builds Kestrel along may have a compiler that warns of more.
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A unique symbol would keep the library in the process after it was closed.
    # g++ 12 reports overlaps in its own string operator+ (its bug 105651).
    target_compile_options(${target} PRIVATE -fno-gnu-unique -Wno-restrict)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(${target} PRIVATE -Wreserved-identifier)
  endif()
  if(KESTREL_SANITIZE)
    # With the sanitizers' checks in between, g++ 12 takes parts of std::regex for uninitialized.
    target_compile_options(${target} PRIVATE
      -fsanitize=${KESTREL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
      $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(${target} PRIVATE -fsanitize=${KESTREL_SANITIZE})
    if(KESTREL_SANITIZE STREQUAL "integer")
      target_compile_options(${target} PRIVATE
        -fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/integer_ignorelist.txt)
    endif()
  endif()
endfunction()

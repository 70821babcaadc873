# What makes a fault harder to misuse: a program at random addresses, tables that nobody can write to
# once it runs, checked stacks, checked copies. GCC for Windows has no Control Flow Guard.
function(kestrel_harden target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /GS /guard:cf)
    target_link_options(${target} PRIVATE /GUARD:CF /DYNAMICBASE /NXCOMPAT /HIGHENTROPYVA)
    return()
  endif()
  target_compile_options(${target} PRIVATE -fstack-protector-strong)
  if(NOT KESTREL_SANITIZE AND CMAKE_BUILD_TYPE MATCHES "Release|RelWithDebInfo|MinSizeRel")
    target_compile_options(${target} PRIVATE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  endif()
  if(WIN32)
    target_link_options(${target} PRIVATE -Wl,--nxcompat,--dynamicbase,--high-entropy-va)
    target_link_libraries(${target} PRIVATE -l:libssp.a)  # the checks of the stack, not as a DLL
    return()
  endif()
  target_compile_options(${target} PRIVATE -fstack-clash-protection)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    target_compile_options(${target} PRIVATE -fcf-protection=full)
  endif()
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  # The linker marks a file for indirect branch tracking only if all of it is made for that; the C
  # library's start files of Debian 12 are not. A shadow stack asks nothing of them.
  target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack,-z,shstk
    $<$<STREQUAL:$<TARGET_PROPERTY:${target},TYPE>,EXECUTABLE>:-pie>)
endfunction()

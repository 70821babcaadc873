# The host and its tests include large headers, which many sources compiled as one read once. The
# tests are always compiled so, the host for builds that are made for their checks; what ships is
# compiled source by source, which also shows that each of them includes what it needs.
#
# kestrel_compile_in_batches(SIZE): the targets of this folder
macro(kestrel_compile_in_batches size)
  if(${size} GREATER 0)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE ${size})
  endif()
  add_compile_options(${KESTREL_HOST_OPTIONS})
endmacro()

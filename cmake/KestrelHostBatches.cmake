# The host and its tests include large headers, which many sources compiled as one read once. For
# builds that are made for their checks; what ships is compiled source by source, which also shows
# that each of them includes what it needs.
#
# Included by a folder, for its targets.
if(KESTREL_HOST_BATCH GREATER 0)
  set(CMAKE_UNITY_BUILD ON)
  set(CMAKE_UNITY_BUILD_BATCH_SIZE ${KESTREL_HOST_BATCH})
endif()
add_compile_options(${KESTREL_HOST_OPTIONS})

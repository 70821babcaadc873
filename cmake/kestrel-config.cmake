# Found by find_package(kestrel); gives the target kestrel::kestrel.
include(${CMAKE_CURRENT_LIST_DIR}/kestrel-targets.cmake)

# The package has no parts to choose from.
foreach(component IN LISTS kestrel_FIND_COMPONENTS)
  if(kestrel_FIND_REQUIRED_${component})
    set(kestrel_FOUND FALSE)
    set(kestrel_NOT_FOUND_MESSAGE "kestrel has no component ${component}")
  endif()
endforeach()

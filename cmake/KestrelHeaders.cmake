# The public headers in the form in which hosts include them, <kestrel/...>: every header of api/
# and the one that states the version, side by side in one folder. The same folder is made in the
# build tree, for add_subdirectory(), and in the installed tree.
set(kestrel_include_directory ${PROJECT_BINARY_DIR}/include)

file(GLOB kestrel_public_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/api/*.h)
list(APPEND kestrel_public_headers ${PROJECT_BINARY_DIR}/generated/kestrel_version.h)
foreach(header IN LISTS kestrel_public_headers)
  # Copies, since Windows makes links for administrators only.
  get_filename_component(name ${header} NAME)
  configure_file(${header} ${kestrel_include_directory}/kestrel/${name} COPYONLY)
endforeach()

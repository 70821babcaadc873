# Makes the linker's view of the exported names, a version script or a module definition file,
# from the one list of them, and lets a shared library export exactly these.
function(kestrel_export_only target list_file)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list_file})
  file(STRINGS ${list_file} names)
  list(JOIN names ";\n    " joined)
  set(version_script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  file(CONFIGURE OUTPUT ${version_script}
    CONTENT "{\n  global:\n    @joined@;\n  local:\n    *;\n};\n" @ONLY)
  list(JOIN names "\n  " joined)
  set(definition_file ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
  file(CONFIGURE OUTPUT ${definition_file} CONTENT "EXPORTS\n  @joined@\n" @ONLY)

  if(WIN32)
    target_sources(${target} PRIVATE ${definition_file})
  else()
    target_link_options(${target} PRIVATE LINKER:--version-script=${version_script})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${version_script})
  endif()
endfunction()

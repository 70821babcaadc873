# Run by CPack on the files that it is about to pack. Windows has no libraries of MinGW-w64, so the
# DLLs that ours need go along; then finish.py adds what every package holds about itself.
function(kestrel_finish root prefix name)
  execute_process(
    COMMAND ${CPACK_KESTREL_PYTHON} -B ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/finish.py
      ${root} ${prefix} --package ${name} --version ${CPACK_PACKAGE_VERSION} --kind ${CPACK_GENERATOR}
      --contact ${CPACK_PACKAGE_CONTACT} --objdump ${CPACK_KESTREL_OBJDUMP}
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

if(CPACK_GENERATOR STREQUAL DEB)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} key)
    kestrel_finish(${CPACK_TEMPORARY_DIRECTORY}/${component} usr
      ${CPACK_DEBIAN_${key}_PACKAGE_NAME})
  endforeach()
  return()
endif()
if(CPACK_GENERATOR STREQUAL ZIP)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -DFOLDER=${CPACK_TEMPORARY_DIRECTORY}/bin
      -DOBJDUMP=${CPACK_KESTREL_OBJDUMP} "-DDIRECTORIES=${CPACK_KESTREL_DLL_DIRECTORIES}"
      -P ${CMAKE_CURRENT_LIST_DIR}/run_time_dlls.cmake
    COMMAND_ERROR_IS_FATAL ANY)
endif()
kestrel_finish(${CPACK_TEMPORARY_DIRECTORY} . kestrel)

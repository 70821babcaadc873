# Installs the build BUILD and moves what was installed to TREE, so that every test that takes it
# from there also shows that it can be moved.
set(first_place ${TREE}-at-first)
file(REMOVE_RECURSE ${TREE} ${first_place})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${first_place}
  COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
file(RENAME ${first_place} ${TREE})

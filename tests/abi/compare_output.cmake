# Runs `program` and fails when it does, or prints something else than the file `expected` holds.
execute_process(COMMAND ${program} OUTPUT_VARIABLE actual COMMAND_ERROR_IS_FATAL ANY)
file(READ ${expected} text)
if(NOT actual STREQUAL text)
  message(FATAL_ERROR "printed:\n${actual}\nexpected:\n${text}")
endif()

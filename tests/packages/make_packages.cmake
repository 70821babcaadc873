# Makes the packages of CONFIG in an empty FOLDER, and nothing but them is left there.
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${CPACK} --config ${CONFIG} -B ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE ${FOLDER}/_CPack_Packages)

# Writes the generated harness anew and compares it with the checked-in files.
# Run with -DGENERATOR=... (the program, its emulator before it) -DFOLDER=... (scratch) -DEXAMPLE=... (the checked-in folder)
file(REMOVE_RECURSE "${FOLDER}")
execute_process(COMMAND ${GENERATOR} "${FOLDER}" COMMAND_ERROR_IS_FATAL ANY)
foreach(name IN ITEMS generated-240.dat good.device)
  execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files "${FOLDER}/${name}" "${EXAMPLE}/${name}"
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()

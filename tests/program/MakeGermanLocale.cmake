# Compiles the German locale into FOLDER.
cmake_minimum_required(VERSION 3.25)
file(MAKE_DIRECTORY "${FOLDER}")
execute_process(COMMAND localedef -i de_DE -f UTF-8 "${FOLDER}/de_DE.UTF-8" RESULT_VARIABLE status ERROR_VARIABLE errors)
if(NOT EXISTS "${FOLDER}/de_DE.UTF-8/LC_NUMERIC")
  message(FATAL_ERROR "localedef: ${status} ${errors}")
endif()

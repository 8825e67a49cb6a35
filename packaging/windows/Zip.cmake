# Run by CPack: packs what it has put together. The order of the names, not that of the disk; UTC; no owners and modes,
# which mean nothing on Windows.
set(zip "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip")
set(parent "${CPACK_TEMPORARY_DIRECTORY}/..")
file(REMOVE "${zip}")
execute_process(COMMAND find ${CPACK_PACKAGE_FILE_NAME} -type f -exec chmod 644 {} +
  WORKING_DIRECTORY "${parent}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND find ${CPACK_PACKAGE_FILE_NAME} -type f
  COMMAND "${CMAKE_COMMAND}" -E env LC_ALL=C sort
  COMMAND "${CMAKE_COMMAND}" -E env TZ=UTC zip -X -q -9 "${zip}" -@
  WORKING_DIRECTORY "${parent}" COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES "${zip}")

# The package for Debian.

# Beside the program, wherever that is: in bin/, and where it is a link to.
set_target_properties(kxbench kxui_wx PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(ShortTest kxlearn kxselftest PROPERTIES INSTALL_RPATH "$ORIGIN;$ORIGIN/../../bin;$ORIGIN/simulator")

file(CREATE_LINK "../${program_folder}/kxbench" "${CMAKE_CURRENT_BINARY_DIR}/kxbench" SYMBOLIC)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/kxbench" DESTINATION bin COMPONENT runtime)

install_text(linux/README.txt ${document_folder} README.txt)
install_text(linux/copyright ${document_folder} copyright)
install(FILES "${PROJECT_SOURCE_DIR}/CHANGELOG.md" DESTINATION ${document_folder} COMPONENT runtime)
install(FILES /usr/share/doc/libcli11-dev/copyright DESTINATION ${document_folder}/licences RENAME cli11.txt
  COMPONENT runtime)
install(FILES /usr/share/doc/libeigen3-dev/copyright DESTINATION ${document_folder}/licences RENAME eigen.txt
  COMPONENT runtime)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The package's own libraries, among them the driver, which comes from elsewhere where there is a tester.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/bin" "${PROJECT_BINARY_DIR}/bin/simulator")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "A plug-in for a test-system host that tests wiring harnesses over relay cards and one measuring instrument,
a stand-in host with a command line (kxbench), and a simulated tester to try it all on without hardware.")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

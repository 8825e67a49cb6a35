# The zip for Windows: the toolkit's libraries, and the licences of all that others wrote and that is inside.

find_package(wxWidgets 3.2 REQUIRED COMPONENTS core base)
install(IMPORTED_RUNTIME_ARTIFACTS wx::wxbase wx::wxcore RUNTIME DESTINATION . COMPONENT runtime)
# What is not built here is not stripped with the rest; the tool also puts another time into the files.
install(CODE "
  if(CMAKE_INSTALL_DO_STRIP)
    file(GLOB libraries \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/wx*.dll\")
    execute_process(COMMAND \"${CMAKE_STRIP}\" \${libraries} COMMAND_ERROR_IS_FATAL ANY)
  endif()"
  COMPONENT runtime)

install_text(windows/README.txt . README.txt)
install_text(windows/LICENCES.txt licences README.txt)

# install_licence(WORK FILE...): the licence texts of one work
function(install_licence work)
  foreach(file IN LISTS ARGN)
    cmake_path(GET file FILENAME name)
    if(NOT name MATCHES "\\.txt$")
      string(APPEND name .txt)
    endif()
    install(FILES "${file}" DESTINATION licences/${work} RENAME "${name}" COMPONENT runtime)
  endforeach()
endfunction()

get_filename_component(licences "${PROJECT_SOURCE_DIR}/build/windows-prefix/share/licences" REALPATH)
file(GLOB wxwidgets "${licences}/wxwidgets/*.txt")
install_licence(wxwidgets ${wxwidgets})
install_licence(cli11 "${licences}/libcli11-dev/copyright")
install_licence(eigen "${licences}/libeigen3-dev/copyright")
install_licence(nlohmann-json "${licences}/nlohmann-json3-dev/copyright")
foreach(library IN ITEMS yaml-cpp pugixml sqlite3 soci)
  install_licence(${library} "${licences}/${library}/copyright")
endforeach()
install_licence(gcc /usr/share/doc/gcc-mingw-w64-base/copyright)
install_licence(mingw-w64 /usr/share/doc/mingw-w64-common/copyright)
# The licences that Debian's copyright files only refer to.
set(common Apache-2.0 GPL-2 GPL-3 LGPL-2.1 MPL-2.0)
list(TRANSFORM common PREPEND /usr/share/common-licenses/)
install_licence(common ${common})

# CPack's own zip holds the files in the order of the disk.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${CMAKE_CURRENT_SOURCE_DIR}/windows/Zip.cmake")
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-windows-x64)

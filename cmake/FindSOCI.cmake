# The target `soci`: SOCI with SQLite, on Linux with PostgreSQL too. There they are shared libraries, which bring many
# others along: for modules. For Windows they are the archives that scripts/windows/prepare has built.
include(FindPackageHandleStandardArgs)

# In the order of linking.
set(SOCI_PARTS soci_sqlite3 soci_postgresql soci_core sqlite3 pq)
find_path(SOCI_HEADERS soci/soci.h)
set(SOCI_FOLDERS SOCI_HEADERS)
if(WIN32)
  list(REMOVE_ITEM SOCI_PARTS soci_postgresql pq)
else()
  find_path(SOCI_PQ_HEADERS libpq-fe.h PATH_SUFFIXES postgresql)
  list(APPEND SOCI_FOLDERS SOCI_PQ_HEADERS)
endif()
set(SOCI_LIBRARIES)
foreach(part IN LISTS SOCI_PARTS)
  find_library(SOCI_${part} ${part})
  list(APPEND SOCI_LIBRARIES SOCI_${part})
endforeach()
mark_as_advanced(${SOCI_FOLDERS} ${SOCI_LIBRARIES})
find_package_handle_standard_args(SOCI REQUIRED_VARS ${SOCI_LIBRARIES} ${SOCI_FOLDERS})

if(SOCI_FOUND AND NOT TARGET soci)
  add_library(soci INTERFACE IMPORTED GLOBAL)
  foreach(folder IN LISTS SOCI_FOLDERS)
    target_include_directories(soci SYSTEM INTERFACE "${${folder}}")
  endforeach()
  foreach(library IN LISTS SOCI_LIBRARIES)
    target_link_libraries(soci INTERFACE "${${library}}")
  endforeach()
  # Debian's configuration header asks for Boost, of which nothing is used here.
  target_compile_definitions(soci INTERFACE SOCICONFIG_H_INCLUDED SOCI_HAVE_CXX11)
endif()

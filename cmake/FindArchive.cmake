# find_archive(PACKAGE TARGET HEADER LIBRARY): for a find module. TARGET is the library as an archive, so that starting a
# program does not load it: Debian's on Linux, for Windows what scripts/windows/prepare has built.
include_guard(GLOBAL)
include(FindPackageHandleStandardArgs)

macro(find_archive package target header library)
  find_path(${package}_HEADERS ${header})
  find_library(${package}_ARCHIVE lib${library}.a)
  mark_as_advanced(${package}_HEADERS ${package}_ARCHIVE)
  find_package_handle_standard_args(${package} REQUIRED_VARS ${package}_ARCHIVE ${package}_HEADERS)
  if(${package}_FOUND AND NOT TARGET ${target})
    add_library(${target} STATIC IMPORTED GLOBAL)
    set_target_properties(${target} PROPERTIES
      IMPORTED_LOCATION "${${package}_ARCHIVE}" INTERFACE_INCLUDE_DIRECTORIES "${${package}_HEADERS}")
  endif()
endmacro()

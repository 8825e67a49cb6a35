# Cross build for 64-bit Windows with mingw-w64 (posix threads).
#
# Libraries built for Windows lie in the prefix that scripts/windows/prepare makes and links as build/windows-prefix.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

get_filename_component(prefix "${CMAKE_CURRENT_LIST_DIR}/../build/windows-prefix" REALPATH)
if(NOT EXISTS "${prefix}/lib/mingw-unload.o")
  message(FATAL_ERROR "No libraries for Windows in ${prefix}. Run scripts/windows/prepare first.")
endif()

# Where this lies does not get into the programs: the same sources make the same bytes everywhere.
get_filename_component(projectFolder "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
set(CMAKE_CXX_FLAGS_INIT "-ffile-prefix-map=${projectFolder}=.")
unset(projectFolder)

# -static: the compiler's run-time libraries (libgcc, libstdc++, winpthread) go into each DLL and program, so that a
# DLL needs nothing beside it but what it names. Libraries given by path, import libraries among them, are not touched.
# --no-insert-timestamp: the same sources make the same bytes.
set(linkerFlags "-static -Wl,--no-insert-timestamp")
# The linker's default of 2 MiB hides stack overflows that the 1 MiB of a usual Windows program brings out.
set(CMAKE_EXE_LINKER_FLAGS_INIT "${linkerFlags} -Wl,--stack,1048576")
# See mingw-unload.c.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${linkerFlags} ${prefix}/lib/mingw-unload.o")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${linkerFlags} ${prefix}/lib/mingw-unload.o")

list(APPEND CMAKE_FIND_ROOT_PATH "${prefix}")
unset(prefix)
unset(linkerFlags)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# wxWidgets brings targets with full paths; the module of the same name would hand out -l options, which -static
# takes for static libraries.
set(CMAKE_FIND_PACKAGE_PREFER_CONFIG ON)

get_filename_component(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/windows/run" ABSOLUTE)

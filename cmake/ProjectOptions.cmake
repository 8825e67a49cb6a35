# Language level, warnings and sanitizers of every target of this project, in one interface target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# RUNPATH, never RPATH: LD_LIBRARY_PATH must win, because it is how another driver library is put in front.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
add_link_options("$<$<PLATFORM_ID:Linux>:LINKER:--enable-new-dtags>")

add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(project_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -Wcast-align -Wformat=2
  # Findings of the optimiser, which at full optimisation are about the standard library's insides.
  $<IF:$<CONFIG:Release>,-Wno-restrict,-Wnull-dereference>
  $<$<BOOL:${SHORTTEST_WERROR}>:-Werror>)
if(WIN32)
  target_compile_definitions(project_options INTERFACE
    UNICODE _UNICODE _WIN32_WINNT=0x0601 WIN32_LEAN_AND_MEAN NOMINMAX=1)
endif()

# optimise_room(): more optimisation than the preset says for a room that computes much. What sanitizers watch, and
# what is counted, is not optimised otherwise, to compile fast; such a room's tests would take longer than that saves.
macro(optimise_room)
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    add_compile_options(-O3)
  elseif(SHORTTEST_COVERAGE OR (SHORTTEST_SANITIZE AND NOT SHORTTEST_FUZZ))
    add_compile_options(-O1)
  endif()
endmacro()

if(SHORTTEST_COVERAGE)
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate)
endif()

if(SHORTTEST_SANITIZE)
  add_compile_options(-fsanitize=${SHORTTEST_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${SHORTTEST_SANITIZE})
endif()

# leave_no_symbol_open(LIBRARY): a module for whose symbols nobody would answer does not link. Those of the sanitizers
# come from the program that loads it.
function(leave_no_symbol_open library)
  if(NOT WIN32 AND NOT SHORTTEST_SANITIZE)
    target_link_options(${library} PRIVATE "LINKER:--no-undefined")
  endif()
endfunction()

if(SHORTTEST_FUZZ)
  # Without the tracing of every comparison, which halves the speed: corpus and dictionary know the words.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()

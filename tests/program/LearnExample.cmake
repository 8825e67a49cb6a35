# Learns DEVICE into a file of its own, LEARNED, with the range of EXPECTATION: the matrix must be the stored one,
# and the device must pass against what was learned.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

# The data block of an expectation file, and its range.
function(read_expectation file range block)
  file(READ "${file}" text)
  string(REPLACE "\r\n" "\n" text "${text}")
  if(NOT text MATCHES "START=([0-9]+)\nENDE=([0-9]+)\n")
    message(FATAL_ERROR "${file} has no range")
  endif()
  set(${range} "${CMAKE_MATCH_1}-${CMAKE_MATCH_2}" PARENT_SCOPE)
  string(REGEX REPLACE "^.*\\[DATEN\\]\n" "" text "${text}")
  set(${block} "${text}" PARENT_SCOPE)
endfunction()

read_expectation("${EXPECTATION}" range stored)
file(REMOVE "${LEARNED}")
run_bench(--device "${DEVICE}" --channels "${range}" learn "${LEARNED}")
expect("exit status of learning" "${status}" 0)
read_expectation("${LEARNED}" learned_range learned)
expect("range" "${learned_range}" "${range}")
expect("matrix" "${learned}" "${stored}")

run_bench(--device "${DEVICE}" check "${LEARNED}")
expect("exit status of checking what was learned" "${status}" 0)

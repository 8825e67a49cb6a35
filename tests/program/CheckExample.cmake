# Checks DEVICE against EXPECTATION: the records must be those that the device file announces in its lines
# "# record: ...", and the exit status must say whether there is a finding among them. SEPARATOR: the locale's
# decimal separator, where it is no point.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

file(READ "${DEVICE}" description)
string(REGEX MATCHALL "# record: [^\r\n]*" announced "${description}")
list(TRANSFORM announced REPLACE "^# record: " "")
if(NOT announced)
  message(FATAL_ERROR "${DEVICE} announces no records")
endif()
if(SEPARATOR)
  list(TRANSFORM announced REPLACE "([0-9])[.]([0-9])" "\\1${SEPARATOR}\\2")
endif()
list(JOIN announced "\n" expected)

set(expected_status 0)
if(expected MATCHES "Spannung an|fehlende|Kurzschluss zwischen")
  set(expected_status 1)
endif()

run_bench(--format records --device "${DEVICE}" check "${EXPECTATION}")
expect("records" "${output}" "${expected}\n")
expect("exit status" "${status}" "${expected_status}")
expect("standard error" "${errors}" "")

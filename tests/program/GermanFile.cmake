# Under a German locale a threshold is written with a comma, and read back with it.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

file(REMOVE "${LEARNED}")
run_bench(--device "${DEVICE}" --channels 1-20 --threshold 2.5 learn "${LEARNED}")
expect("exit status" "${status}" 0)
file(STRINGS "${LEARNED}" threshold REGEX "^WIDERSTAND=")
expect("threshold" "${threshold}" "WIDERSTAND=2,5")

# Learned once more without the option, the file keeps its threshold: the comma was understood.
run_bench(--device "${DEVICE}" learn "${LEARNED}")
expect("exit status" "${status}" 0)
file(STRINGS "${LEARNED}" threshold REGEX "^WIDERSTAND=")
expect("threshold" "${threshold}" "WIDERSTAND=2,5")

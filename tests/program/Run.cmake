# run_bench(ARGUMENT...): runs the program; sets `status`, `output` and `errors`.
macro(run_bench)
  execute_process(COMMAND ${KXBENCH} --progress none ${ARGN}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  string(REPLACE "\r\n" "\n" output "${output}")
endmacro()

# expect(WHAT ACTUAL EXPECTED): fails, showing both, unless they are equal.
function(expect what actual expected)
  if(NOT "${actual}" STREQUAL "${expected}")
    message(SEND_ERROR "${what}:\n${actual}\nexpected:\n${expected}")
  endif()
endfunction()

# The nets that take the most merging, on the call stack that the program has: CHANNELS channels all connected are
# learned, and two nets of half of them turn out shorted in a check. FOLDER: where the files go.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/Run.cmake")

# write_device(NAME CHANNEL...): a device of five cards whose channels are one net, or two where 0 stands between.
function(write_device name)
  list(JOIN ARGN " " channels)
  string(REPLACE " 0 " "\nnet " channels "${channels}")
  file(WRITE "${FOLDER}/${name}.device" "cards 5\nnet ${channels}\n")
endfunction()

math(EXPR half "${CHANNELS} / 2")
foreach(channel RANGE 1 ${CHANNELS})
  list(APPEND all ${channel})
  if(channel LESS_EQUAL half)
    list(APPEND lower ${channel})
  else()
    list(APPEND upper ${channel})
  endif()
endforeach()
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
write_device(one ${all})
write_device(two ${lower} 0 ${upper})

foreach(device IN ITEMS one two)
  run_bench(--device "${FOLDER}/${device}.device" --channels 1-${CHANNELS} learn "${FOLDER}/${device}.dat")
  expect("exit status of learning ${device}" "${status}" 0)
endforeach()

# The short joins the two nets while the check runs, half a minute for the waits of its relays alone.
run_bench(--format records --device "${FOLDER}/one.device" check "${FOLDER}/two.dat")
expect("exit status of the short" "${status}" 1)
if(NOT output MATCHES "^Kurzschluss|Kurzschluss zwischen")
  message(SEND_ERROR "records of the short:\n${output}")
endif()

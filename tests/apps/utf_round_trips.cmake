# vexa utf: every encoding, with and without a byte-order mark, converts the
# sample and back unchanged; malformed input exits 1 with one line on
# standard error and leaves no output file.
include("${CMAKE_CURRENT_LIST_DIR}/expect.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

foreach(enc UTF-8 UTF-16LE UTF-16BE UTF-32LE UTF-32BE)
  foreach(mark "" "--bom")
    set(there "${WORK}/sample.${enc}${mark}")
    execute_process(COMMAND "${VEXA}" utf --to ${enc} ${mark} -o "${there}" "${SAMPLE}" RESULT_VARIABLE rc)
    expect("to ${enc} ${mark}: status ${rc}" rc EQUAL 0)
    set(from --from ${enc})
    if(mark)
      set(from "")  # the mark names the encoding
    endif()
    execute_process(COMMAND "${VEXA}" utf ${from} -o "${there}.back" "${there}" RESULT_VARIABLE rc)
    expect("from ${enc} ${mark}: status ${rc}" rc EQUAL 0)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${SAMPLE}" "${there}.back" RESULT_VARIABLE differ)
    expect("${enc} ${mark}: the round trip changed the text" differ EQUAL 0)
  endforeach()
endforeach()

# Three bytes are no UTF-16 text: the last unit is cut off.
file(WRITE "${WORK}/odd.txt" "abc")
execute_process(COMMAND "${VEXA}" utf --from utf-16le -o "${WORK}/odd.out" "${WORK}/odd.txt"
                RESULT_VARIABLE rc ERROR_VARIABLE err)
expect("malformed input: status ${rc}" rc EQUAL 1)
expect("malformed input: message '${err}'" err MATCHES "^vexa utf: [^\n]*odd.txt:1:2: malformed UTF-16LE at byte 2: truncated code unit\n$")
expect("malformed input: an output file was left" NOT EXISTS "${WORK}/odd.out")
file(GLOB leftovers LIST_DIRECTORIES false "${WORK}/.odd*" "${WORK}/odd.out*")
list(LENGTH leftovers left)
expect("malformed input: temporary files were left: ${leftovers}" left EQUAL 0)

# UTF-16 of the sample is not UTF-8.
execute_process(COMMAND "${VEXA}" utf -o "${WORK}/bad.out" "${WORK}/sample.UTF-16LE"
                RESULT_VARIABLE rc ERROR_VARIABLE err)
expect("UTF-16 read as UTF-8: status ${rc}" rc EQUAL 1)
expect("UTF-16 read as UTF-8: message '${err}'" err MATCHES "malformed UTF-8 at byte [0-9]+: [a-z]")
expect("UTF-16 read as UTF-8: an output file was left" NOT EXISTS "${WORK}/bad.out")

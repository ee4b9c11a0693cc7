# vexa utf names the first fault of malformed input: file, line, column (in
# characters), byte offset and what is wrong; status 1, one line. The text
# before the fault has been written to standard output.
include("${CMAKE_CURRENT_LIST_DIR}/expect.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

# name | encoding | input bytes (printf escapes) | expected "LINE:COLUMN: ... at byte N: FAULT"
set(cases
  "cut by ASCII|UTF-8|\\303\\050|1:1: malformed UTF-8 at byte 0: truncated sequence"
  "cut by the end|UTF-8|a\\303\\251\\342\\202|1:3: malformed UTF-8 at byte 3: truncated sequence"
  "cut by a new lead|UTF-8|\\342\\202\\342\\202\\254|1:1: malformed UTF-8 at byte 0: truncated sequence"
  "stray continuation|UTF-8|ab\\nc\\200|2:2: malformed UTF-8 at byte 4: unexpected continuation byte"
  "overlong C0|UTF-8|\\300\\257|1:1: malformed UTF-8 at byte 0: overlong form"
  "overlong E0|UTF-8|x\\340\\200\\257|1:2: malformed UTF-8 at byte 1: overlong form"
  "overlong F0|UTF-8|\\360\\217\\277\\277|1:1: malformed UTF-8 at byte 0: overlong form"
  "encoded surrogate|UTF-8|\\355\\240\\200|1:1: malformed UTF-8 at byte 0: encoded surrogate"
  "above U+10FFFF|UTF-8|\\364\\220\\200\\200|1:1: malformed UTF-8 at byte 0: above U+10FFFF"
  "lead F5|UTF-8|\\n\\n\\365\\200\\200\\200|3:1: malformed UTF-8 at byte 2: above U+10FFFF"
  "lead FF|UTF-8|\\303\\251\\303\\251\\377|1:3: malformed UTF-8 at byte 4: invalid byte"
  "lone low surrogate|UTF-16LE|a\\000\\n\\000\\000\\334|2:1: malformed UTF-16LE at byte 4: lone surrogate"
  "unpaired high surrogate|UTF-16BE|\\000a\\330\\000\\000b|1:2: malformed UTF-16BE at byte 2: lone surrogate"
  "high surrogate at the end|UTF-16LE|\\075\\330\\000\\336\\075\\330|1:2: malformed UTF-16LE at byte 4: lone surrogate"
  "odd byte count|UTF-16LE|a\\000b|1:2: malformed UTF-16LE at byte 2: truncated code unit"
  "UTF-32 above|UTF-32LE|a\\000\\000\\000\\000\\000\\021\\000|1:2: malformed UTF-32LE at byte 4: above U+10FFFF"
  "UTF-32 surrogate|UTF-32BE|\\000\\000\\330\\000|1:1: malformed UTF-32BE at byte 0: encoded surrogate"
  "UTF-32 cut|UTF-32LE|a\\000\\000\\000b\\000|1:2: malformed UTF-32LE at byte 4: truncated code unit"
  "offset counts the mark|UTF-16LE|\\377\\376a\\000\\000\\334|1:2: malformed UTF-16LE at byte 4: lone surrogate"
)
set(i 0)
foreach(case IN LISTS cases)
  string(REPLACE "|" ";" fields "${case}")
  list(GET fields 0 name)
  list(GET fields 1 encoding)
  list(GET fields 2 bytes)
  list(GET fields 3 expected)
  math(EXPR i "${i} + 1")
  write_bytes("${WORK}/in${i}" "${bytes}")
  run_vexa(utf --from ${encoding} "${WORK}/in${i}")
  expect("${name}: status ${rc}, message '${err}'" rc EQUAL 1)
  expect("${name}:\n  expected 'vexa utf: ${WORK}/in${i}:${expected}'\n  actual   '${err}'"
         err STREQUAL "vexa utf: ${WORK}/in${i}:${expected}\n")
endforeach()

# The text before the fault is written; --from is not needed for UTF-8.
write_bytes("${WORK}/prefix" "ok\\n\\300")
run_vexa(utf "${WORK}/prefix")
expect("prefix: status ${rc}, output '${out}'" rc EQUAL 1 AND out STREQUAL "ok\n")

# A fault far past the first block: lines and columns run on across blocks.
write_bytes("${WORK}/line" "\\303\\251t\\303\\251 \\342\\202\\254 \\360\\237\\230\\200\\n")
file(READ "${WORK}/line" line)  # 8 characters, 15 bytes
string(REPEAT "${line}" 20000 long)
file(WRITE "${WORK}/long" "${long}abc")
write_bytes("${WORK}/surrogate" "\\355\\277\\277")
file(READ "${WORK}/surrogate" surrogate)
file(APPEND "${WORK}/long" "${surrogate}")
run_vexa(utf -o "${WORK}/long.out" "${WORK}/long")
expect("long input: '${err}'"
       err STREQUAL "vexa utf: ${WORK}/long:20001:4: malformed UTF-8 at byte 300003: encoded surrogate\n")
expect("long input: output file written despite the fault" NOT EXISTS "${WORK}/long.out")

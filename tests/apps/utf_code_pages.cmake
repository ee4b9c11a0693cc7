# vexa utf with code pages: text goes to a code page and back unchanged, by
# name and by number; double-byte text longer than one 64 KiB block keeps
# every character whole across the block ends; bytes a page lacks become
# '?'; --list shows the table; unknown names are usage errors.
include("${CMAKE_CURRENT_LIST_DIR}/expect.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

# Converts `in` with the options given after it and checks the result
# against the file `expected`.
function(expect_conversion in expected)
  execute_process(COMMAND "${VEXA}" utf ${ARGN} -o "${WORK}/actual" "${in}"
                  RESULT_VARIABLE rc ERROR_VARIABLE err)
  expect("utf ${ARGN} ${in}: status ${rc}, '${err}'" rc EQUAL 0)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${expected}" "${WORK}/actual"
                  RESULT_VARIABLE differ)
  if(NOT differ EQUAL 0)
    file(READ "${expected}" want HEX)
    file(READ "${WORK}/actual" got HEX)
    message(FATAL_ERROR "utf ${ARGN} ${in}:\n  expected ${want}\n  actual   ${got}")
  endif()
endfunction()

# Each text: the code page's name, its number, its bytes, and the same text
# in UTF-8. 本 in cp932 ends with 0x7B, a trail byte in the ASCII range.
set(pages
  "cp1252|1252|caf\\351 \\200 na\\357ve\\n|caf\\303\\251 \\342\\202\\254 na\\303\\257ve\\n"
  "koi8-r|20866|\\360\\322\\311\\327\\305\\324\\n|\\320\\237\\321\\200\\320\\270\\320\\262\\320\\265\\321\\202\\n"
  "shift_jis|932|\\223\\372\\226\\173\\214\\352 \\261\\n|\\346\\227\\245\\346\\234\\254\\350\\252\\236 \\357\\275\\261\\n"
  "latin1|28591|\\251 \\374\\n|\\302\\251 \\303\\274\\n")
foreach(entry IN LISTS pages)
  string(REPLACE "|" ";" fields "${entry}")
  list(GET fields 0 name)
  list(GET fields 1 number)
  list(GET fields 2 legacy)
  list(GET fields 3 utf8)
  write_bytes("${WORK}/${number}.txt" "${legacy}")
  write_bytes("${WORK}/${number}.utf8" "${utf8}")
  foreach(page "${name}" "${number}")
    expect_conversion("${WORK}/${number}.txt" "${WORK}/${number}.utf8" --from ${page})
    expect_conversion("${WORK}/${number}.utf8" "${WORK}/${number}.txt" --to ${page})
  endforeach()
endforeach()

# Between two code pages, and between a code page and UTF-16.
write_bytes("${WORK}/privet.1251" "\\317\\360\\350\\342\\345\\362\\n")
expect_conversion("${WORK}/20866.txt" "${WORK}/privet.1251" --from KOI8_R --to windows-1251)
write_bytes("${WORK}/cafe.utf16" "c\\000\\351\\000\\n\\000")
write_bytes("${WORK}/cafe.1252" "c\\351\\n")
expect_conversion("${WORK}/cafe.1252" "${WORK}/cafe.utf16" --from cp1252 --to utf-16le)
expect_conversion("${WORK}/cafe.utf16" "${WORK}/cafe.1252" --from utf-16le --to cp1252)
# Code page 4 is UTF-8 itself.
expect_conversion("${WORK}/1252.utf8" "${WORK}/1252.utf8" --from 4 --to utf-8)

# Bytes a page does not define and characters it lacks become '?'.
write_bytes("${WORK}/undefined.1252" "a\\201b")
write_bytes("${WORK}/undefined.utf8" "a?b")
expect_conversion("${WORK}/undefined.1252" "${WORK}/undefined.utf8" --from 1252)
write_bytes("${WORK}/cyrillic.utf8" "x\\320\\257y")
write_bytes("${WORK}/cyrillic.latin1" "x??y")
expect_conversion("${WORK}/cyrillic.utf8" "${WORK}/cyrillic.latin1" --to latin1)

# Double-byte text over several blocks: 2^16 copies of a unit, written by
# doubling a file. With 日本 every block has a trail byte below 0x80 to cut
# after; with 日ｱ (three bytes, no byte below 0x80) the block ends fall inside
# characters and the cut is found by walking the pairs.
function(repeat_file unit path)
  file(COPY_FILE "${unit}" "${path}")
  foreach(i RANGE 1 16)
    execute_process(COMMAND ${CMAKE_COMMAND} -E cat "${path}" "${path}" OUTPUT_FILE "${path}.2")
    file(RENAME "${path}.2" "${path}")
  endforeach()
endfunction()
foreach(text "nihon|\\223\\372\\226\\173|\\346\\227\\245\\346\\234\\254"
             "hikana|\\223\\372\\261|\\346\\227\\245\\357\\275\\261")
  string(REPLACE "|" ";" fields "${text}")
  list(GET fields 0 name)
  list(GET fields 1 legacy)
  list(GET fields 2 utf8)
  write_bytes("${WORK}/${name}.unit.932" "a${legacy}")
  write_bytes("${WORK}/${name}.unit.utf8" "a${utf8}")
  repeat_file("${WORK}/${name}.unit.932" "${WORK}/${name}.932")
  repeat_file("${WORK}/${name}.unit.utf8" "${WORK}/${name}.utf8")
  expect_conversion("${WORK}/${name}.932" "${WORK}/${name}.utf8" --from cp932)
  expect_conversion("${WORK}/${name}.utf8" "${WORK}/${name}.932" --to 932)
endforeach()
# The same without any ASCII byte at all, so no block has one to cut after.
write_bytes("${WORK}/pure.unit.932" "\\223\\372\\261")
write_bytes("${WORK}/pure.unit.utf8" "\\346\\227\\245\\357\\275\\261")
repeat_file("${WORK}/pure.unit.932" "${WORK}/pure.932")
repeat_file("${WORK}/pure.unit.utf8" "${WORK}/pure.utf8")
expect_conversion("${WORK}/pure.932" "${WORK}/pure.utf8" --from sjis)

# A text cut inside its last character: the incomplete tail is dropped.
write_bytes("${WORK}/cut.932" "a\\223")
write_bytes("${WORK}/cut.utf8" "a")
expect_conversion("${WORK}/cut.932" "${WORK}/cut.utf8" --from 932)

# --list: one line per code page, number, names, description.
run_vexa(utf --list)
expect("--list: status ${rc}" rc EQUAL 0)
foreach(line "\n  1252  cp1252, windows-1252 +western European \\(Windows\\)\n"
             "\n 20866  koi8-r, cp20866 +Russian \\(KOI8-R\\)\n"
             "\n   932  shift_jis, cp932, windows-31j, sjis, ms932 +Japanese"
             "\n     2  - +the locale's own code set")
  expect("--list lacks '${line}' in:\n${out}" out MATCHES "${line}")
endforeach()
string(REGEX MATCHALL "\n" lines "${out}")
list(LENGTH lines count)
expect("--list: ${count} lines" count EQUAL 30)

# Unknown names and numbers, and a byte-order mark for a code page.
foreach(args "--from;ebcdic" "--to;1234" "--to;cp1252;--bom")
  run_vexa(utf ${args} "${WORK}/1252.utf8")
  expect("utf ${args}: status ${rc}" rc EQUAL 2)
  expect("utf ${args}: message '${err}'" err MATCHES "^vexa utf: (unknown encoding '(ebcdic|1234)'|--bom needs)")
endforeach()

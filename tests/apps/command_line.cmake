# The command line every subcommand shares, shown on vexa utf: option forms,
# '--', help, version, and the usage errors (status 2, one line).
include("${CMAKE_CURRENT_LIST_DIR}/expect.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(WRITE "${WORK}/-dash" "hi\n")
file(WRITE "${WORK}/in.txt" "hi\n")

# Accepted: arguments | expected standard output (a regular expression)
set(accepted
  "utf|--|${WORK}/-dash|^hi\n$"
  "help|utf|^usage: vexa utf "
  "utf|--help|^usage: vexa utf "
  "utf|-h|^usage: vexa utf "
  "--version|^vexa [0-9]+\\.[0-9]+"
  "-V|^vexa [0-9]+\\.[0-9]+"
  "--help|^usage: vexa "
)
foreach(case IN LISTS accepted)
  string(REPLACE "|" ";" args "${case}")
  list(POP_BACK args expected)
  run_vexa(${args})
  expect("vexa ${args}: status ${rc}, '${err}'" rc EQUAL 0 AND err STREQUAL nothing)
  expect("vexa ${args}: output '${out}' does not match '${expected}'" out MATCHES "${expected}")
endforeach()

# The forms of an option's value: "hi\n" in UTF-16 is six bytes.
foreach(form "--to=utf-16le" "--to;utf-16le" "-tutf-16le" "-t;utf-16le" "--output=${WORK}/out;--to=utf-16le")
  file(REMOVE "${WORK}/out")
  run_vexa(utf ${form} -o "${WORK}/out" "${WORK}/in.txt")
  file(SIZE "${WORK}/out" size)
  expect("vexa utf ${form}: status ${rc}, '${err}', ${size} bytes" rc EQUAL 0 AND size EQUAL 6)
endforeach()

# Refused with status 2: arguments | expected message (a regular expression)
set(refused
  "utf|--output=|${WORK}/in.txt|^vexa utf: option '--output' was given an empty file name"
  "utf|${WORK}/in.txt|extra|^vexa utf: unexpected argument 'extra'"
  "utf|--bogus|^vexa utf: unknown option '--bogus'"
  "utf|--bom=yes|^vexa utf: option '--bom' takes no value"
  "utf|--to|^vexa utf: option '--to' needs a value ENC"
  "utf|--to=ebcdic|${WORK}/in.txt|^vexa utf: unknown encoding 'ebcdic'"
  "--version|extra|^vexa: unexpected argument 'extra'"
  "help|nosuch|^vexa: unknown command 'nosuch'"
  "nosuch|^vexa: unknown command 'nosuch'"
  "--nosuch|^vexa: unknown option '--nosuch'"
)
foreach(case IN LISTS refused)
  string(REPLACE "|" ";" args "${case}")
  list(POP_BACK args expected)
  set(shown "${args}")
  run_vexa(${args})
  expect("vexa ${shown}: status ${rc}" rc EQUAL 2)
  expect("vexa ${shown}: message '${err}' does not match '${expected}'" err MATCHES "${expected}")
  expect("vexa ${shown}: more than one line '${err}'" NOT err MATCHES "\n.")
endforeach()
# Empty file names (an unquoted list would drop them, so these are spelt out).
execute_process(COMMAND "${VEXA}" utf "" RESULT_VARIABLE rc ERROR_VARIABLE err)
expect("vexa utf '': status ${rc}, '${err}'"
       rc EQUAL 2 AND err STREQUAL "vexa utf: an empty file name was given (see 'vexa help utf')\n")
execute_process(COMMAND "${VEXA}" utf -o "" "${WORK}/in.txt" RESULT_VARIABLE rc ERROR_VARIABLE err)
expect("vexa utf -o '': status ${rc}, '${err}'"
       rc EQUAL 2 AND err MATCHES "^vexa utf: option '-o' was given an empty file name")
run_vexa()
expect("vexa alone: status ${rc}" rc EQUAL 2 AND err MATCHES "^usage: vexa ")

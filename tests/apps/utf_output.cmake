# Where vexa utf writes: a regular file is replaced whole and keeps its mode,
# a symbolic link stays a link to the replaced file, a FIFO or device is
# written directly, and every failed write is one message and status 1.
include("${CMAKE_CURRENT_LIST_DIR}/expect.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
write_bytes("${WORK}/in.txt" "gr\\303\\274\\303\\237\\n")
file(READ "${WORK}/in.txt" text)

function(mode_of path var)
  execute_process(COMMAND stat -c %a "${path}" OUTPUT_VARIABLE mode OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(${var} "${mode}" PARENT_SCOPE)
endfunction()

function(no_temporary_files)
  file(GLOB left LIST_DIRECTORIES false "${WORK}/.*")
  expect("temporary files left: ${left}" left STREQUAL nothing)
endfunction()

# A mode-640 file keeps its mode.
file(WRITE "${WORK}/private.txt" "old\n")
file(CHMOD "${WORK}/private.txt" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ)
run_vexa(utf -o "${WORK}/private.txt" "${WORK}/in.txt")
mode_of("${WORK}/private.txt" mode)
file(READ "${WORK}/private.txt" written)
expect("mode 640: status ${rc} '${err}'" rc EQUAL 0)
expect("mode 640: now ${mode}" mode STREQUAL "640")
expect("mode 640: text '${written}'" written STREQUAL "${text}")

# A symbolic link stays a link; the file it names gets the text.
file(WRITE "${WORK}/target.txt" "old\n")
file(CREATE_LINK "target.txt" "${WORK}/link.txt" SYMBOLIC)
file(CREATE_LINK "link.txt" "${WORK}/link2.txt" SYMBOLIC)
run_vexa(utf --output=${WORK}/link2.txt "${WORK}/in.txt")
file(READ "${WORK}/target.txt" written)
expect("link: status ${rc} '${err}'" rc EQUAL 0)
expect("link: no longer a link" IS_SYMLINK "${WORK}/link.txt" AND IS_SYMLINK "${WORK}/link2.txt")
expect("link: target holds '${written}'" written STREQUAL "${text}")

# A dangling link creates the file it names.
file(CREATE_LINK "fresh.txt" "${WORK}/dangling.txt" SYMBOLIC)
run_vexa(utf -o "${WORK}/dangling.txt" "${WORK}/in.txt")
expect("dangling link: status ${rc} '${err}'" rc EQUAL 0 AND IS_SYMLINK "${WORK}/dangling.txt"
       AND EXISTS "${WORK}/fresh.txt")

# A FIFO is written directly: a reader gets the text and the FIFO stays.
execute_process(COMMAND mkfifo "${WORK}/fifo")
execute_process(COMMAND "${VEXA}" utf -o "${WORK}/fifo" "${WORK}/in.txt"
                COMMAND cat "${WORK}/fifo"
                RESULTS_VARIABLE results OUTPUT_VARIABLE read TIMEOUT 20)
execute_process(COMMAND test -p "${WORK}/fifo" RESULT_VARIABLE still_fifo)
string(REPLACE ";" "," results "${results}")
expect("fifo: statuses ${results}" results STREQUAL "0,0")
expect("fifo: the reader got '${read}'" read STREQUAL "${text}")
expect("fifo: no longer a FIFO" still_fifo EQUAL 0)

# A full device, as the target and as standard output.
run_vexa(utf -o /dev/full "${WORK}/in.txt")
expect("-o /dev/full: status ${rc}, '${err}'"
       rc EQUAL 1 AND err STREQUAL "vexa utf: /dev/full: cannot write (No space left on device)\n")
execute_process(COMMAND "${VEXA}" utf "${WORK}/in.txt" OUTPUT_FILE /dev/full RESULT_VARIABLE rc ERROR_VARIABLE err)
expect("> /dev/full: status ${rc}, '${err}'"
       rc EQUAL 1 AND err STREQUAL "vexa utf: <stdout>: cannot write (No space left on device)\n")
execute_process(COMMAND test -c /dev/full RESULT_VARIABLE still_device)
expect("/dev/full is no longer a device" still_device EQUAL 0)
execute_process(COMMAND "${VEXA}" --help OUTPUT_FILE /dev/full RESULT_VARIABLE rc ERROR_VARIABLE err)
expect("--help > /dev/full: status ${rc}, '${err}'" rc EQUAL 1 AND err MATCHES "No space left on device")

# Malformed input leaves an existing file as it was, and nothing beside it.
write_bytes("${WORK}/bad.txt" "ok\\n\\377")
file(WRITE "${WORK}/kept.txt" "old\n")
run_vexa(utf -o "${WORK}/kept.txt" "${WORK}/bad.txt")
file(READ "${WORK}/kept.txt" kept)
expect("malformed: status ${rc}, kept '${kept}'" rc EQUAL 1 AND kept STREQUAL "old\n")
no_temporary_files()

# Targets that cannot be written: one message each, status 1.
file(MAKE_DIRECTORY "${WORK}/dir")
run_vexa(utf -o "${WORK}/dir" "${WORK}/in.txt")
expect("directory: status ${rc}, '${err}'" rc EQUAL 1 AND err MATCHES "dir: cannot write \\(Is a directory\\)\n$")
run_vexa(utf -o "${WORK}/missing/x.txt" "${WORK}/in.txt")
expect("missing folder: status ${rc}, '${err}'" rc EQUAL 1 AND err MATCHES "No such file or directory\\)\n$")
run_vexa(utf -o "${WORK}/x.txt" "${WORK}/no-such-input")
expect("missing input: status ${rc}, '${err}'"
       rc EQUAL 1 AND err MATCHES "no-such-input: cannot open \\(No such file or directory\\)\n$")
expect("missing input: output created" NOT EXISTS "${WORK}/x.txt")
no_temporary_files()

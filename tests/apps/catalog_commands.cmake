# vexa catalog: check, list and render on the bundled example catalogs, and
# the failures: a broken file, a missing message, bad arguments.
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

function(expect what)
  if(NOT (${ARGN}))
    message(FATAL_ERROR "${what}")
  endif()
endfunction()

# Runs vexa with the arguments; sets out, err and rc in the caller.
function(run)
  execute_process(COMMAND "${VEXA}" ${ARGN} RESULT_VARIABLE r OUTPUT_VARIABLE o ERROR_VARIABLE e)
  set(rc "${r}" PARENT_SCOPE)
  set(out "${o}" PARENT_SCOPE)
  set(err "${e}" PARENT_SCOPE)
endfunction()

run(catalog check "${CATALOGS}" --lang de_DE)
expect("check: status ${rc}, ${out}${err}" rc EQUAL 0)
expect("check: output '${out}'" out STREQUAL "message_catalogs::result_type - No Error\n2 catalogs, 9 messages for language de_DE\n")

run(catalog list "${CATALOGS}/app.xmc" --lang fr)
expect("list: status ${rc}" rc EQUAL 0)
expect("list: languages '${out}'" out MATCHES "catalog app \\(languages: en fr\\)\n")
expect("list: arguments '${out}'" out MATCHES "\n  saved \\[fr\\] file:string size:memory elapsed:duration\n")
expect("list: included catalog '${out}'" out MATCHES "catalog units \\(languages: \\.\\)\n")

set(saved app saved file=report.txt size:mem=1536 elapsed:ms=3723000)
run(catalog render "${CATALOGS}" --lang en ${saved})
expect("render en: '${out}' ${err}" out STREQUAL "Saved report.txt (1.5 KB) in 1 hr 2 min 3 sec.\n")
run(catalog render "${CATALOGS}" --lang=de_DE ${saved})
expect("render de_DE: '${out}'" out STREQUAL "report.txt gespeichert (1,5 KB) in 1 Std 2 Min 3 Sek.\n")
run(catalog render "${CATALOGS}" -l fr ${saved})
expect("render fr: '${out}'" out STREQUAL "report.txt enregistré (1,5 KB) en 1 h 2 min 3 s.\n")
run(catalog render "${CATALOGS}" --lang de_DE app greeting user=Ada)
expect("render de_DE greeting: '${out}'" out STREQUAL "Guten Tag, Ada!\n")
run(catalog render "${CATALOGS}" --lang en app items count:int=3 sum:int=0xbeef)
expect("render int: '${out}'" out STREQUAL "3 items, checksum 0x0000beef.\n")
run(catalog render "${CATALOGS}" --lang en app average load:double=0.756)
expect("render double: '${out}'" out STREQUAL "Average load: 0.76.\n")
run(catalog render "${CATALOGS}" --lang en app quick_start preset=release command=tour)
expect("render README command: '${out}'" out STREQUAL "cmake --workflow --preset release && build/release/bin/vexa tour\n")

# A missing argument renders in place and fails the command.
run(catalog render "${CATALOGS}" --lang en app greeting)
expect("missing argument: status ${rc}" rc EQUAL 1)
expect("missing argument: '${out}'" out STREQUAL "Hello, ?invalid?!\n")
expect("missing argument: '${err}'" err STREQUAL "vexa catalog render: missing argument(s): user\n")

run(catalog render "${CATALOGS}" --lang en app nothing)
expect("no message: status ${rc}" rc EQUAL 1)
expect("no message: '${err}'" err STREQUAL "vexa catalog render: no message 'nothing' in catalog 'app'\n")

foreach(bad "n:int=x" "n:mem=-1" "n:colour=red" "=1" "novalue")
  run(catalog render "${CATALOGS}" --lang en app greeting ${bad})
  expect("bad argument ${bad}: status ${rc}" rc EQUAL 2)
endforeach()
run(catalog list "${CATALOGS}")
expect("list without --lang: status ${rc}" rc EQUAL 2)
run(catalog frobnicate)
expect("unknown subcommand: status ${rc}" rc EQUAL 2)

# A broken file: the result text with its context lines, status 1.
file(WRITE "${WORK}/broken.xmc" "<?xml version=\"1.0\"?>\n<xmc version=\"1.0\"><catalog name=\"c\" lang=\"en\"><msg name=\"m\">a<p/></msg></catalog></xmc>\n")
run(catalog check "${WORK}/broken.xmc")
expect("broken: status ${rc}" rc EQUAL 1)
expect("broken: '${out}'" out STREQUAL "message_catalogs::result_type - XMC file is not valid\n xmc_file_loader::load_error - Invalid element \"p\"\n in message element: \"m\"\n in catalog element: \"c\"\n in file: \"${WORK}/broken.xmc\"\n")
run(catalog check "${WORK}/none")
expect("missing path: status ${rc}" rc EQUAL 1)
expect("missing path: '${out}'" out MATCHES "Entity \\(file or directory\\) \".*/none\" was not found on disk")

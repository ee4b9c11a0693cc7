# vexa config on the bundled example: keys lists every value, dump writes the
# tree, get names the source that answers (command line over file over
# environment), and a missing key or file exits 1.
function(expect what)
  if(NOT (${ARGN}))
    message(FATAL_ERROR "${what}")
  endif()
endfunction()

function(run out_var rc_var)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
  set(${out_var} "${out}${err}" PARENT_SCOPE)
  set(${rc_var} "${rc}" PARENT_SCOPE)
endfunction()

run(keys rc "${VEXA}" config keys "${SAMPLE}")
expect("keys: status ${rc}" rc EQUAL 0)
set(expected_keys [=[application.title = Vexa Demo
application.version = 2.10
log.level = info
net.host = localhost
net.port = 8080
net.proxy.host = proxy.example
net.proxy.port = 3128
net.timeout = 30
paths.data = /var/lib/vexa
paths.search[0] = /usr/share/vexa
paths.search[1] = /usr/local/share/vexa
paths.search[2] = ~/.vexa
]=])
expect("keys printed:\n${keys}" keys STREQUAL expected_keys)

run(dump rc "${VEXA}" config dump "${SAMPLE}")
expect("dump: status ${rc}" rc EQUAL 0)
string(FIND "${dump}" "net : true\n|---------------\\\n|\t\thost : 1 localhost\n" at)
expect("dump printed:\n${dump}" NOT at EQUAL -1)
string(REGEX MATCH "end\n$" tail "${dump}")
expect("dump does not end with end:\n${dump}" tail STREQUAL "end\n")

run(got rc ${CMAKE_COMMAND} -E env NET_TIMEOUT=1 "${VEXA}" config get net.port --cfg "${SAMPLE}")
expect("get from the file: ${got}" got STREQUAL "net.port = 8080 (standard file)\n")
run(got rc "${VEXA}" config get Net.Port --cfg "${SAMPLE}" -- --net.port=9090)
expect("get from the command line: ${got}" got STREQUAL "Net.Port = 9090 (command line)\n")
run(got rc ${CMAKE_COMMAND} -E env VEXA_ONLY_IN_ENV=here "${VEXA}" config get vexa_only_in_env --cfg "${SAMPLE}")
expect("get from the environment: ${got}" got STREQUAL "vexa_only_in_env = here (enviroment)\n")
run(got rc "${VEXA}" config get paths.search --cfg "${SAMPLE}")
expect("get an array: ${got}" got MATCHES "^paths.search\\[0\\] = /usr/share/vexa \\(standard file\\)\n.*\\[2\\] = ~/.vexa")
run(got rc "${VEXA}" config get alias --cfg "${SAMPLE}" -- alias=x)
expect("get a key=value argument: ${got}" got STREQUAL "alias = x (command line)\n")

run(got rc "${VEXA}" config get no.such.key --cfg "${SAMPLE}")
expect("missing key: status ${rc}, ${got}" rc EQUAL 1 AND got STREQUAL "vexa config get: no.such.key is not set\n")
run(got rc "${VEXA}" config keys "${SAMPLE}.missing")
expect("missing file: status ${rc}" rc EQUAL 1)
run(got rc "${VEXA}" config frobnicate)
expect("unknown subcommand: status ${rc}" rc EQUAL 2)

# vexa xml: check prints one line per file and exits 1 when any failed;
# tokens lists the valid example and reads standard input for "-".
function(expect what)
  if(NOT (${ARGN}))
    message(FATAL_ERROR "${what}")
  endif()
endfunction()

set(dir "${EXAMPLES}/xml")
execute_process(COMMAND "${VEXA}" xml check "${dir}/greeting.xml"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("valid example: status ${rc}" rc EQUAL 0)
expect("valid example: '${out}'" out STREQUAL "${dir}/greeting.xml: ok\n")

foreach(case
    "tag_mismatch.xml:3: error tag_mismatch (2): catalog"
    "missing_declaration.xml:0: error missing_declaration (4): "
    "duplicate_attribute.xml:2: error duplicate_attribute (9): name"
    "unknown_entity.xml:2: error unknown_entity (7): "
    "unexpected_end.xml:0: error unexpected_end (1): ")
  string(REGEX REPLACE ":.*" "" file "${case}")
  execute_process(COMMAND "${VEXA}" xml check "${dir}/greeting.xml" "${dir}/${file}"
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out)
  expect("${file}: status ${rc}" rc EQUAL 1)
  expect("${file}: '${out}'" out STREQUAL "${dir}/greeting.xml: ok\n${dir}/${case}\n")
endforeach()

execute_process(COMMAND "${VEXA}" xml check "${dir}/no such file.xml" RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("missing file: status ${rc}" rc EQUAL 1)
expect("missing file: '${out}'" out MATCHES "no such file.xml: cannot open \\(")

execute_process(COMMAND "${VEXA}" xml tokens - INPUT_FILE "${dir}/greeting.xml"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out)
expect("tokens: status ${rc}" rc EQUAL 0)
foreach(line
    "comment  A small catalog-like document: every construct the parser accepts. \n"
    "element_start xmc\nattribute_name version\nattribute_value 1.0\nstart_tag_end\nspace \\n  \n"
    "character Hello, \nelement_start arg\n"
    "character Use <b> for bold & \"quotes\".\n"
    "character ABC and a space\n"
    "character first\nelement_start br\nstart_tag_end\nelement_end br\ncharacter second\n")
  string(FIND "${out}" "${line}" at)
  expect("tokens: '${line}' not in\n${out}" NOT at EQUAL -1)
endforeach()

execute_process(COMMAND "${VEXA}" xml tokens - INPUT_FILE "${dir}/tag_mismatch.xml"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("tokens of a bad file: status ${rc}" rc EQUAL 1)
expect("tokens of a bad file: '${out}'" out MATCHES "element_start msg\nstart_tag_end\ncharacter text\n$")
expect("tokens of a bad file: '${err}'" err STREQUAL "<stdin>:3: error tag_mismatch (2): catalog\n")

execute_process(COMMAND "${VEXA}" xml frobnicate RESULT_VARIABLE rc ERROR_VARIABLE err)
expect("unknown action: status ${rc}" rc EQUAL 2)

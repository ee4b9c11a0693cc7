# Shared by the program test scripts: expect(WHAT CONDITION...) fails the test
# with WHAT when the condition is false; run_vexa(...) runs the program and
# sets rc, out and err in the caller.
function(expect what)
  if(NOT (${ARGN}))
    message(FATAL_ERROR "${what}")
  endif()
endfunction()

macro(run_vexa)
  execute_process(COMMAND "${VEXA}" ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err
                  TIMEOUT 60)
endmacro()

# Writes the bytes given as printf(1) octal escapes, e.g. "\\303\\050".
function(write_bytes path escapes)
  execute_process(COMMAND printf "${escapes}" OUTPUT_FILE "${path}" RESULT_VARIABLE rc)
  expect("printf ${escapes}: status ${rc}" rc EQUAL 0)
endfunction()

# Compare with the empty text as `x STREQUAL nothing`: a literal "" would be
# lost on its way through expect's arguments.
set(nothing "")

# Compiles each public header as the only include of a translation unit with
# strict warnings turned into errors; lists every header that fails, with the
# compiler's words, and fails if there is any.
#   -DCOMPILER=g++ -DSTANDARD=17 -DINCLUDE_DIR=include -DHEADERS=a.hpp|b.hpp -DWORK=dir
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
string(REPLACE "|" ";" headers "${HEADERS}")
list(LENGTH headers count)
if(count EQUAL 0)
  message(FATAL_ERROR "no public headers found")
endif()
set(failed "")
foreach(header IN LISTS headers)
  string(MAKE_C_IDENTIFIER "${header}" stem)
  set(source "${WORK}/${stem}.cpp")
  file(WRITE "${source}" "#include <${header}>\n")
  execute_process(
    COMMAND "${COMPILER}" -std=c++${STANDARD} -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow
            -Wconversion -Werror "-I${INCLUDE_DIR}" "${source}"
    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0 OR NOT out STREQUAL "")
    string(APPEND failed "\n--- ${header}\n${out}")
  endif()
endforeach()
file(REMOVE_RECURSE "${WORK}")
if(NOT failed STREQUAL "")
  message(FATAL_ERROR "headers that do not compile alone cleanly with ${COMPILER} -std=c++${STANDARD}:${failed}")
endif()
message(STATUS "${count} headers compile alone with ${COMPILER} -std=c++${STANDARD}")

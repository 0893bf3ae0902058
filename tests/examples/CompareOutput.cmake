# Runs a program, with what it takes to run it in front, and compares what it prints with a file.
execute_process(COMMAND ${PROGRAM} "${PLUGIN}" "${GRAPH}" "${OUTPUT}"
    OUTPUT_VARIABLE printed ERROR_VARIABLE complaints RESULT_VARIABLE result)
file(READ "${EXPECTED}" expected)
string(REPLACE "\r\n" "\n" printed "${printed}")
if(NOT result EQUAL 0 OR NOT printed STREQUAL expected)
    message(FATAL_ERROR "ended with ${result}\n${complaints}\nprinted:\n${printed}\nexpected:\n${expected}")
endif()

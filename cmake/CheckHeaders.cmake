# Compiles every public header alone: it includes or declares what it names, is C++17 whatever the
# library itself is written in, and gives no warning. Then the templates that they offer, in use.
#
# COMPILER, FLAGS  what with; the flags have "|" between them, as have the two lists below
# QT_FOLDERS       where Qt's headers are; without, the headers that include Qt are left out
# QT_HEADERS       the headers of the library that may include it
# FIRST            a header to be read before those of the library, which then come all at once
# STANDARD         a folder that stands in for the standard library

cmake_minimum_required(VERSION 3.25)

string(REPLACE "|" ";" flags "${FLAGS}")
list(PREPEND flags -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)
set(tav "-I${SOURCE_DIR}/include")
set(kit "-I${SOURCE_DIR}/kit/include")
set(pel "-I${SOURCE_DIR}/pel_1_2/include")

string(REPLACE "|" ";" folders "${QT_FOLDERS}")
string(REPLACE "|" ";" qt_headers "${QT_HEADERS}")
set(qt "-fPIC")
foreach(folder IN LISTS folders)
    list(APPEND qt -isystem "${folder}")
endforeach()

if(STANDARD)
    # With -nostdinc: no header of this system is taken for one of the other.
    list(APPEND flags -nostdinc -isystem "${STANDARD}")
endif()
if(FIRST)
    list(APPEND flags -include "${FIRST}")
endif()

set(empty "${WORK_DIR}/empty.cpp")
file(WRITE "${empty}" "")
set(failures 0)
set(checked 0)
function(compile what)
    execute_process(COMMAND "${COMPILER}" ${flags} ${ARGN} RESULT_VARIABLE result ERROR_VARIABLE words)
    math(EXPR checked "${checked} + 1")
    set(checked ${checked} PARENT_SCOPE)
    if(NOT result EQUAL 0)
        message("${what} does not stand alone:\n${words}")
        math(EXPR failures "${failures} + 1")
        set(failures ${failures} PARENT_SCOPE)
    endif()
endfunction()

file(GLOB tav_headers "${SOURCE_DIR}/include/tav/*.h")
file(GLOB kit_headers "${SOURCE_DIR}/kit/include/tav/kit/*.h")
file(GLOB pel_headers "${SOURCE_DIR}/pel_1_2/include/pel_1_2/*.h")
if(NOT tav_headers OR NOT kit_headers OR NOT pel_headers)
    message(FATAL_ERROR "no public headers below ${SOURCE_DIR}")
endif()

# MSVC reads sources in the code page of the user's system unless it is told otherwise, and warns of what is none.
foreach(header IN LISTS tav_headers kit_headers pel_headers)
    file(READ "${header}" bytes HEX)
    string(REGEX REPLACE "[0-7][0-9a-f]" "" others "${bytes}")
    if(NOT others STREQUAL "")
        message("${header} is not plain ASCII")
        math(EXPR failures "${failures} + 1")
    endif()
endforeach()

if(FIRST)
    set(tav_headers "")
    set(kit_headers "")
    set(pel_headers "")
endif()

# Included, not compiled: in the main file "#pragma once" is a warning of its own.
foreach(header IN LISTS tav_headers)
    get_filename_component(name "${header}" NAME)
    if(NOT name IN_LIST qt_headers)
        compile("${header}" ${tav} -include "${header}" "${empty}")
    elseif(folders)
        compile("${header}" ${tav} ${qt} -include "${header}" "${empty}")
    endif()
endforeach()

foreach(header IN LISTS kit_headers)
    compile("${header}" ${tav} ${kit} -include "${header}" "${empty}")
endforeach()

foreach(header IN LISTS pel_headers)
    compile("${header}" ${pel} -include "${header}" "${empty}")
endforeach()

compile("Templates.cpp" ${tav} ${kit} ${pel} "${SOURCE_DIR}/tests/headers/Templates.cpp")

message("${checked} files compiled alone with ${COMPILER}, ${failures} faults")
if(failures GREATER 0)
    message(FATAL_ERROR "public headers do not stand alone")
endif()

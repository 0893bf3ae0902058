# tav_add_build_info(<target>): the header "BuildInfo.h" for the target. It is made at build time, and
# anew only when the commit, the branch or the numbers change, so that an idle build stays idle.

if(NOT CMAKE_SCRIPT_MODE_FILE)
    function(tav_add_build_info target)
        set(folder "${PROJECT_BINARY_DIR}/generated")
        add_custom_target(tav_build_info
            COMMAND "${CMAKE_COMMAND}"
                "-DTAV_SOURCE_DIR=${PROJECT_SOURCE_DIR}"
                "-DTAV_HEADER=${folder}/BuildInfo.h"
                "-DTAV_VERSION=${PROJECT_VERSION}"
                "-DTAV_BUILD_NUMBER=${TAV_BUILD_NUMBER}"
                -P "${PROJECT_SOURCE_DIR}/cmake/BuildInfo.cmake"
            BYPRODUCTS "${folder}/BuildInfo.h"
            COMMENT "Looking up the build information"
            VERBATIM)
        add_dependencies(${target} tav_build_info)
        target_include_directories(${target} PUBLIC "${folder}")
    endfunction()
    return()
endif()

# ---- as a script, run by the target above

string(REPLACE "." ";" numbers "${TAV_VERSION}")
list(GET numbers 0 TAV_VERSION_MAJOR)
list(GET numbers 1 TAV_VERSION_MINOR)
list(GET numbers 2 TAV_VERSION_PATCH)

# Only a repository of its own counts: an unpacked archive inside of another one knows no commit.
set(TAV_COMMIT "0000000000000000000000000000000000000000")
set(TAV_BRANCH "unknown")
find_program(git_program git)
if(git_program AND EXISTS "${TAV_SOURCE_DIR}/.git")
    execute_process(COMMAND "${git_program}" rev-parse --verify HEAD
        WORKING_DIRECTORY "${TAV_SOURCE_DIR}" OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE
        RESULT_VARIABLE failed ERROR_QUIET)
    if(NOT failed AND commit MATCHES "^[0-9a-f]+$")
        string(SUBSTRING "${commit}" 0 40 TAV_COMMIT)
    endif()
    execute_process(COMMAND "${git_program}" rev-parse --abbrev-ref HEAD
        WORKING_DIRECTORY "${TAV_SOURCE_DIR}" OUTPUT_VARIABLE branch OUTPUT_STRIP_TRAILING_WHITESPACE
        RESULT_VARIABLE failed ERROR_QUIET)
    if(NOT failed AND branch)
        string(REGEX REPLACE "[\"\\]" "_" TAV_BRANCH "${branch}")
    endif()
endif()

# string(TIMESTAMP) gives the time of SOURCE_DATE_EPOCH when that is set.
set(key "${TAV_VERSION} ${TAV_BUILD_NUMBER} ${TAV_COMMIT} ${TAV_BRANCH} $ENV{SOURCE_DATE_EPOCH}")
set(key_file "${TAV_HEADER}.key")
if(EXISTS "${TAV_HEADER}" AND EXISTS "${key_file}")
    file(READ "${key_file}" known)
    if(known STREQUAL key AND NOT "${CMAKE_CURRENT_LIST_DIR}/BuildInfo.h.in" IS_NEWER_THAN "${TAV_HEADER}")
        return()
    endif()
endif()

string(TIMESTAMP TAV_BUILD_DATE_TIME "%Y-%m-%d %H:%M:%S" UTC)
configure_file("${CMAKE_CURRENT_LIST_DIR}/BuildInfo.h.in" "${TAV_HEADER}" @ONLY)
file(TOUCH "${TAV_HEADER}")
file(WRITE "${key_file}" "${key}")

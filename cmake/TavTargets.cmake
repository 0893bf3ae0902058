# One statement for each folder: the library's parts, its tests and its fuzz targets.

# tav_add_subsystem(<name> <file>...): the object library tav_<name>, a part of the shared library.
function(tav_add_subsystem name)
    set(target tav_${name})
    add_library(${target} OBJECT ${ARGN})
    # Also for the private tests: they hold these objects themselves and import nothing.
    target_compile_definitions(${target} PUBLIC TAV_BUILDING)
    target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/include" "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${target} PUBLIC pel_1_2 Qt6::Core Qt6::Gui EXPAT::EXPAT)
    set_property(GLOBAL APPEND PROPERTY TAV_SUBSYSTEMS ${target})
endfunction()

# What the two kinds of test have in common. A test sees the recorders as "support/X.h".
function(_tav_test_program target area)
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    # TAV_DRIVE: as what the tests see the disk under Wine (windows/toolchain.cmake); empty elsewhere.
    target_compile_definitions(${target} PRIVATE
        TAV_TEST_DATA_DIR="${TAV_DRIVE}${PROJECT_SOURCE_DIR}/tests/data"
        TAV_EXAMPLES_DIR="${TAV_DRIVE}${PROJECT_SOURCE_DIR}/examples")
    target_link_libraries(${target} PRIVATE GTest::gtest GTest::gtest_main Qt6::Core)
    # Listed when the tests run, not while building: a program that cannot start is then a failed test.
    gtest_discover_tests(${target}
        TEST_PREFIX "${area}."
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 120
        WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
        PROPERTIES TIMEOUT 300 LABELS "${area}" ENVIRONMENT "${TAV_TEST_ENVIRONMENT}")
endfunction()

# tav_add_test(<area> <file>...): tests of the public headers, against the shared libraries, so that a
# forgotten export fails at once.
function(tav_add_test area)
    set(target test_${area})
    add_executable(${target} ${ARGN})
    target_link_libraries(${target} PRIVATE tav::tav tav::kit tav::pel_1_2)
    _tav_test_program(${target} ${area})
endfunction()

# tav_add_private_test(<area> <file>...): tests of internals, linked with the objects of the library.
function(tav_add_private_test area)
    set(target test_${area})
    add_executable(${target} ${ARGN})
    get_property(subsystems GLOBAL PROPERTY TAV_SUBSYSTEMS)
    target_link_libraries(${target} PRIVATE ${subsystems})
    _tav_test_program(${target} ${area})
endfunction()

# tav_add_fuzz_target(<name> <file>...): the libFuzzer program fuzz_<name>. Its seeds lie in
# fuzz/corpus/<name>, a dictionary in fuzz/<name>.dict.
function(tav_add_fuzz_target name)
    set(target fuzz_${name})
    add_executable(${target} ${ARGN})
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/fuzz")
    target_link_libraries(${target} PRIVATE tav::tav tav::kit)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    set_property(GLOBAL APPEND PROPERTY TAV_FUZZ_PROGRAMS ${target})
endfunction()

# What holds for every target of the project: language, warnings, visibility, sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Debug, Release, RelWithDebInfo or MinSizeRel" FORCE)
endif()

include(GNUInstallDirs)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")

# Installed programs find the libraries beside them wherever the prefix is moved to.
if(APPLE)
    set(tav_origin "@loader_path")
else()
    set(tav_origin "$ORIGIN")
endif()
file(RELATIVE_PATH tav_bin_to_lib "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "${tav_origin};${tav_origin}/${tav_bin_to_lib}")

if(MSVC)
    add_compile_options(/W4 /permissive- /utf-8 /Zc:__cplusplus)
    add_compile_definitions(_CRT_SECURE_NO_WARNINGS NOMINMAX)
else()
    # Nobody replaces a function of the library by one of the same name: its own calls go straight.
    add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -fno-semantic-interposition)
    # Until version 13 it takes "x" + std::string for copies that overlap.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        add_compile_options(-Wno-restrict)
    endif()
endif()
if(TAV_WARNINGS_AS_ERRORS)
    if(MSVC)
        add_compile_options(/WX)
    else()
        add_compile_options(-Werror)
    endif()
endif()

if(TAV_SANITIZE)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "TAV_SANITIZE needs clang; use the preset \"sanitize\"")
    endif()
    # fuzzer-no-link: one instrumented tree serves the tests and the fuzz targets.
    set(tav_sanitizers address,undefined)
    if(TAV_FUZZ)
        string(APPEND tav_sanitizers ",fuzzer-no-link")
    endif()
    add_compile_options(-fsanitize=${tav_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${tav_sanitizers})
    # Classes of Qt carry no type information for its inlines across the library border.
    add_compile_options(-fno-sanitize=vptr)
    add_link_options(-fno-sanitize=vptr)
elseif(UNIX AND NOT APPLE)
    add_link_options(
        $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:LINKER:--no-undefined,-Bsymbolic-functions>)
endif()

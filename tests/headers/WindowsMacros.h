#pragma once

/// @file
/// What a user of the public headers may have had before them on Windows: each of these names is a macro of
/// the system's headers, of which MinGW's leave some out for C++.

#if __has_include(<winsock2.h>)
#    include <winsock2.h>

#    include <windows.h>

// These bring the most.
#    include <dlgs.h>
#    include <shlobj.h>
#    include <winspool.h>
#endif

// Before the macros: not every standard library bears them.
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// NOLINTBEGIN
#undef cdecl
#undef far
#undef interface
#undef max
#undef min
#undef near
#undef pascal
#undef small
#undef CONST
#undef DELETE
#undef ERROR
#undef IN
#undef OPTIONAL
#undef OUT
#undef STRICT
#undef Yield

#define cdecl
#define far
#define interface struct
#define max(a, b) (((a) > (b)) ? (a) : (b))
#define min(a, b) (((a) < (b)) ? (a) : (b))
#define near
#define pascal
#define small char
#define CONST const
#define DELETE 0x00010000L
#define ERROR 0
#define IN
#define OPTIONAL
#define OUT
#define STRICT 1
#define Yield()
// NOLINTEND

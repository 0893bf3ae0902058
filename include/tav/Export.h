#pragma once

/// @file
/// TAV_API marks what the shared library offers; everything else stays hidden inside it.
/// The two building blocks below serve the library's companions too, so that the way a symbol is
/// exported is written once.

#if defined(_WIN32)
#    define TAV_SYMBOL_EXPORT __declspec(dllexport)
#    define TAV_SYMBOL_IMPORT __declspec(dllimport)
#else
#    define TAV_SYMBOL_EXPORT __attribute__((visibility("default")))
#    define TAV_SYMBOL_IMPORT __attribute__((visibility("default")))
#endif

#if defined(TAV_BUILDING)
#    define TAV_API TAV_SYMBOL_EXPORT
#else
#    define TAV_API TAV_SYMBOL_IMPORT
#endif

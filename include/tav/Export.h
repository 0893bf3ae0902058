#pragma once

/// @file
/// TAV_API marks what the shared library offers; everything else stays hidden inside it.
/// The two building blocks below serve the library's companions too, so that the way a symbol is
/// exported is written once.
///
/// Whole classes are marked, never single members: on Windows their tables of virtual operations, type
/// information and the members that compilers make by themselves are then the library's own too.

#if defined(_WIN32) // __declspec is what both kinds of compiler there understand
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

#if defined(_MSC_VER)
// 4251, 4275: a private member, or a base, of an exported class is a template and so not exported itself. No
// module but the library's own touches such a member, and a base like Flaggable is exported along with the
// class. Stays off behind the header: MSVC asks at the class, and every class of the interface has one.
#    pragma warning(disable : 4251 4275)
#endif

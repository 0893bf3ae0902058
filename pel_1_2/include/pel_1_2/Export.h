#pragma once

/// @file
/// PEL_API marks what the shared library offers.

#if defined(_WIN32) && defined(PEL_BUILDING)
#    define PEL_API __declspec(dllexport)
#elif defined(_WIN32)
#    define PEL_API __declspec(dllimport)
#else
#    define PEL_API __attribute__((visibility("default")))
#endif

#if defined(_MSC_VER)
// 4251: a private member of an exported class is of the standard library and so not exported itself.
#    pragma warning(disable : 4251)
#endif

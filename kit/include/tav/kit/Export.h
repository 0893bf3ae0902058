#pragma once

#include <tav/Export.h>

/// @file
/// TAV_KIT_API marks what the kit's shared library offers.

#if defined(TAV_KIT_BUILDING)
#    define TAV_KIT_API TAV_SYMBOL_EXPORT
#else
#    define TAV_KIT_API TAV_SYMBOL_IMPORT
#endif

#pragma once

#include <tav/kit/Export.h>

#include <tav/StatusStr.h>
#include <tav/String.h>

/// @file
/// Files as documents are kept in them. Paths are UTF-8, with "/" or the system's own separator.

namespace TAV_marlo_v1::kit {

/// Writes the file whole: the bytes are written beside it and take its place once they are on the disk, so
/// that whatever fails leaves the old file. The error names the file.
[[nodiscard]] TAV_KIT_API StatusStr writeFile(char const* path, char const* bytes, unsigned long long size);

/// What keeps the path from naming a file on this system, whether there is one or not; empty when nothing
/// does. On Windows that is windowsPathFault; elsewhere every path may name a file. Whatever opens a file
/// asks first, as Windows would write to a device, or under another name, without a word.
TAV_KIT_API String pathFault(char const* path);

/// The same for Windows on every system, for files that travel: names of devices ("nul.xml"), characters
/// that no name has there (of which ":" would hide the text inside another file), blanks or dots at the end
/// of a name, which would get lost.
TAV_KIT_API String windowsPathFault(char const* path);

} // namespace TAV_marlo_v1::kit

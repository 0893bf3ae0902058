#pragma once

#include <tav/StatusStr.h>

#include <QtCore/QByteArray>

namespace TAV_marlo_v1::kit {

/// Reads a whole file (path in UTF-8). The error names the file.
StatusStr readTextFile(char const* path, QByteArray& bytes);

/// Whether the bytes can be handed on as one text: a NUL would cut it short without a word.
/// @return the error, naming source, line and column
StatusStr checkIsText(QByteArray const& bytes, char const* sourceName);

/// The message with the name of its source in front: "scene.xml: line 3, column 7: …".
StatusStr errorIn(char const* sourceName, char const* message);

} // namespace TAV_marlo_v1::kit

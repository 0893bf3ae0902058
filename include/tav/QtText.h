#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/PortDataType.h>
#include <tav/StringArray.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// @file
/// The texts of the interface as Qt's. Texts are UTF-8; bytes that are not become U+FFFD.

namespace TAV_marlo_v1 {

/// A null `text` gives the empty text.
TAV_API QString toQString(char const* text);
TAV_API QString toQString(String const& text);
TAV_API QStringList toQStringList(StringArray const& texts);
/// In the form of printf's %g, independent of the locale.
TAV_API QString doubleToQString(double value, int precision);

/// The values joined by the separator, without any escaping.
TAV_API QString serializeToQString(StringArray const& values, QString const& separator);

/// The reverse: a type with a single value takes the whole text as one; otherwise the text is split
/// and empty parts dropped. Empty text is no value for a list type and one empty value for any other.
TAV_API StringArray unserializeFromQString(QString const& text, QString const& separator,
                                           AddRefWrapper<PortDataType> const& type);

} // namespace TAV_marlo_v1

#include <tav/QtText.h>

#include "persistence/PortValueText.h"

namespace TAV_marlo_v1 {

QString toQString(char const* text)
{
    return QString::fromUtf8(text);
}

QString toQString(String const& text)
{
    return QString::fromUtf8(text.toChar(), static_cast<qsizetype>(text.size()));
}

QStringList toQStringList(StringArray const& texts)
{
    QStringList list;
    list.reserve(static_cast<qsizetype>(texts.size()));
    for (char const* const text : texts)
        list.append(toQString(text));
    return list;
}

QString doubleToQString(double value, int precision)
{
    return QString::number(value, 'g', precision);
}

QString serializeToQString(StringArray const& values, QString const& separator)
{
    return toQStringList(values).join(separator);
}

StringArray unserializeFromQString(QString const& text, QString const& separator,
                                   AddRefWrapper<PortDataType> const& type)
{
    ValueArity const arity = valueArity(type.get());
    StringArray values;
    if (arity == ValueArity::One || (arity == ValueArity::Any && text.isEmpty())) {
        values.add(text.toUtf8().constData());
        return values;
    }
    for (QString const& part : text.split(separator, Qt::SkipEmptyParts, Qt::CaseSensitive))
        values.add(part.toUtf8().constData());
    return values;
}

} // namespace TAV_marlo_v1

#include <tav/WatchPointTable.h>

#include <QtCore/QXmlStreamReader>

namespace TAV_marlo_v1 {

namespace {

/// The texts of the sibling elements of a value; the value's whole text when it holds none.
QList<QString> cellOf(char const* value)
{
    QString const raw = QString::fromUtf8(value);
    // A value may hold several elements side by side; a document has one root.
    QXmlStreamReader xml(QStringLiteral("<dummy>") + raw + QStringLiteral("</dummy>"));
    QList<QString> siblings;
    QString whole;
    int depth = 0; // 1 inside the root, 2 inside a sibling
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++depth == 2)
                siblings.append(QString());
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
            (depth > 1 ? siblings.last() : whole).append(xml.text());
            break;
        default:
            break;
        }
    }
    if (xml.hasError())
        return {raw};
    return siblings.isEmpty() ? QList<QString>{whole} : siblings;
}

} // namespace

void getWatchPointTableContent(AddRefWrapper<WatchPoint> const& watchPoint, QList<QString>& header,
                               QList<QList<QList<QString>>>& rows)
{
    header.clear();
    rows.clear();
    StringArray names;
    if (!watchPoint || !watchPoint->getRecordedParameters(names))
        return;
    for (unsigned column = 0; column < names.size(); ++column) {
        header.append(QString::fromUtf8(names[column]));
        StringArray values;
        if (!watchPoint->getRecordedValues(names[column], values))
            continue;
        // A column may be longer than those before it.
        while (static_cast<unsigned>(rows.size()) < values.size())
            rows.append(QList<QList<QString>>());
        for (unsigned row = 0; row < values.size(); ++row) {
            rows[static_cast<int>(row)].resize(static_cast<int>(column));
            rows[static_cast<int>(row)].append(cellOf(values[row]));
        }
    }
    for (QList<QList<QString>>& row : rows)
        row.resize(header.size());
}

} // namespace TAV_marlo_v1

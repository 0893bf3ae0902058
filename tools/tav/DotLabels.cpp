#include "DotLabels.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <iterator>

namespace tool {

namespace {

constexpr qsizetype kNameLength = 32;
constexpr qsizetype kNoteLength = 20;
constexpr char kPale[] = "#707880";

QString small(QString const& text)
{
    return QString("<FONT POINT-SIZE=\"9\" COLOR=\"%1\">%2</FONT>").arg(kPale, text);
}

QString rowText(PortRow const& row)
{
    QString text = escaped(shortened(row.text, kNameLength));
    if (!row.note.isEmpty())
        text += "  " + small(escaped(shortened(row.note, kNoteLength)));
    return text;
}

QString dot(PortRow const& row)
{
    return QString("<FONT COLOR=\"%1\">&#9679;</FONT>").arg(row.colour);
}

QString leftCell(PortRow const& row)
{
    return QString("<TD PORT=\"%1\" ALIGN=\"LEFT\">%2 %3</TD>").arg(row.anchor, dot(row), rowText(row));
}

QString rightCell(PortRow const& row)
{
    return QString("<TD PORT=\"%1\" ALIGN=\"RIGHT\">%2 %3</TD>").arg(row.anchor, rowText(row), dot(row));
}

QString table(QString const& rows)
{
    return "<<TABLE BORDER=\"1\" CELLBORDER=\"0\" CELLSPACING=\"0\" CELLPADDING=\"3\" COLOR=\"#606870\" "
           "BGCOLOR=\"white\">"
           + rows + "</TABLE>>";
}

QString headRow(QString const& title, QString const& subtitle, QString const& colour)
{
    QString const cell = "<TR><TD COLSPAN=\"2\" CELLPADDING=\"%1\" BGCOLOR=\"%2\">%3</TD></TR>";
    QString rows = cell.arg(QString("4"), colour, "<B>" + escaped(shortened(title, kNameLength)) + "</B>");
    if (!subtitle.isEmpty() && subtitle != title)
        rows += cell.arg(QString("2"), colour, small(escaped(shortened(subtitle, kNameLength))));
    return rows;
}

QStringList wrapped(QString const& text)
{
    constexpr qsizetype width = 44;
    constexpr qsizetype maxLines = 14;
    QStringList lines;
    for (QString const& paragraph : text.split('\n')) {
        QString line;
        for (QString const& word : paragraph.split(' ', Qt::SkipEmptyParts)) {
            if (!line.isEmpty() && line.size() + word.size() >= width) {
                lines.append(line);
                line.clear();
            }
            line += (line.isEmpty() ? QString() : QString(' ')) + shortened(word, width);
        }
        lines.append(line);
    }
    if (lines.size() > maxLines)
        lines = lines.mid(0, maxLines - 1) << QString(QChar(0x2026));
    return lines;
}

} // namespace

QString TypeColours::colourOf(QString const& type)
{
    // Apart from each other, and dark enough for a line on white.
    static constexpr char const* palette[] = {"#1f77b4", "#d95f02", "#2a9d4a", "#b5179e", "#8c6d1f", "#6a51a3",
                                              "#c1272d", "#008b8b", "#5a6b00", "#e0488b", "#3b4cc0", "#7f5539"};
    auto const known = m_colours.constFind(type);
    if (known != m_colours.constEnd())
        return *known;
    qsizetype const size = static_cast<qsizetype>(std::size(palette));
    QString const colour = palette[m_order.size() % size];
    m_order.append(type);
    m_colours.insert(type, colour);
    return colour;
}

QString escaped(QString const& text)
{
    QString safe;
    for (QChar const c : text)
        safe += c.unicode() < 0x20 && c != '\n' ? QChar(QChar::ReplacementCharacter) : c;
    // Named entities are not known to the label's parser, nor may blanks at the end be left out.
    return safe.toHtmlEscaped().replace('\n', "<BR ALIGN=\"LEFT\"/>");
}

QString shortened(QString const& text, qsizetype length)
{
    QString const line = QString(text).replace('\n', ' ');
    if (line.size() <= length)
        return line;
    qsizetype front = (length - 1) / 2 + (length - 1) % 2;
    qsizetype back = (length - 1) / 2;
    // Half of a character would be none.
    if (line[front - 1].isHighSurrogate())
        --front;
    if (line[line.size() - back].isLowSurrogate())
        --back;
    return line.left(front) + QChar(0x2026) + line.right(back);
}

QString boxLabel(BoxLabel const& box)
{
    QString rows = headRow(box.title, box.subtitle, box.headColour);
    std::size_t const count = std::max(box.left.size(), box.right.size());
    for (std::size_t i = 0; i < count; ++i) {
        rows += "<TR>";
        rows += i < box.left.size() ? leftCell(box.left[i]) : QString("<TD></TD>");
        rows += i < box.right.size() ? rightCell(box.right[i]) : QString("<TD></TD>");
        rows += "</TR>";
    }
    return table(rows);
}

QString borderLabel(QString const& title, QString const& headColour, std::vector<PortRow> const& ports)
{
    QString rows = headRow(title, QString(), headColour);
    for (PortRow const& row : ports)
        rows += QString("<TR><TD COLSPAN=\"2\" PORT=\"%1\" ALIGN=\"LEFT\">%2 %3</TD></TR>")
                    .arg(row.anchor, dot(row), rowText(row));
    return table(rows);
}

QString noteLabel(QString const& title, QString const& text)
{
    QString lines;
    if (!title.isEmpty())
        lines += "<B>" + escaped(shortened(title, 44)) + "</B><BR/>";
    if (!text.isEmpty()) {
        for (QString const& line : wrapped(text))
            lines += escaped(line) + "<BR ALIGN=\"LEFT\"/>";
    }
    return "<" + (lines.isEmpty() ? QString(" ") : lines) + ">";
}

QString headingLabel(QString const& title, QString const& subtitle)
{
    QString text = "<B>" + escaped(shortened(title, 60)) + "</B>";
    if (!subtitle.isEmpty())
        text += "  " + small(escaped(shortened(subtitle, 40)));
    return "<" + text + ">";
}

QString legendLabel(QString const& title, TypeColours& colours)
{
    constexpr qsizetype perRow = 6;
    QString rows = QString("<TR><TD COLSPAN=\"%1\" ALIGN=\"LEFT\"><B>%2</B></TD></TR>")
                       .arg(perRow)
                       .arg(escaped(shortened(title, 100)));
    QStringList types = colours.types();
    types.sort();
    for (qsizetype i = 0; i < types.size(); ++i) {
        QString const name = types[i].isEmpty() ? QString("(no type)") : types[i];
        if (i % perRow == 0)
            rows += "<TR>";
        rows += QString("<TD ALIGN=\"LEFT\"><FONT COLOR=\"%1\">&#9679;</FONT> %2</TD>")
                    .arg(colours.colourOf(types[i]), escaped(shortened(name, kNameLength)));
        if (i % perRow == perRow - 1 || i + 1 == types.size())
            rows += "</TR>";
    }
    return "<<TABLE BORDER=\"0\" CELLBORDER=\"0\" CELLSPACING=\"2\">" + rows + "</TABLE>>";
}

} // namespace tool

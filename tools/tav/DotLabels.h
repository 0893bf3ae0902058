#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace tool {

/// Gives each data type a colour, in the order in which they are asked for: the same graph always
/// gets the same ones.
class TypeColours {
public:
    QString colourOf(QString const& type);
    QStringList const& types() const noexcept { return m_order; }

private:
    QHash<QString, QString> m_colours;
    QStringList m_order;
};

/// One port in a box. The anchor is the name that edges lead to.
struct PortRow {
    QString anchor;
    QString text;
    QString note; ///< behind the text, paler
    QString colour;
};

/// What a box shows: a heading, and below it ports at the left and at the right.
struct BoxLabel {
    QString title;
    QString subtitle;
    QString headColour;
    std::vector<PortRow> left;
    std::vector<PortRow> right;
};

/// Text of any kind, safe inside a label.
QString escaped(QString const& text);
/// At most that many characters, with "…" in the middle of what is longer; one line.
QString shortened(QString const& text, qsizetype length);

// Labels in Graphviz's HTML-like form, with the angle brackets around them.

QString boxLabel(BoxLabel const& box);
/// One port a line, each with one anchor for both sides: the border of a compound.
QString borderLabel(QString const& title, QString const& headColour, std::vector<PortRow> const& ports);
/// Heading and text of an annotation, wrapped.
QString noteLabel(QString const& title, QString const& text);
QString headingLabel(QString const& title, QString const& subtitle);
/// What is drawn, and which colour stands for which type.
QString legendLabel(QString const& title, TypeColours& colours);

} // namespace tool

#include "StoredLayout.h"

#include <tav/Compound.h>
#include <tav/StringArray.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

/// All numbers in the values of an entry, however they are separated; empty if anything else is there.
std::vector<double> numbersOf(Metadata const& metadata, char const* key)
{
    static QRegularExpression const separator("[\\s,;]+");
    StringArray values;
    metadata.getMetadata(key, values);
    std::vector<double> numbers;
    for (char const* value : values) {
        for (QString const& part : QString::fromUtf8(value).split(separator, Qt::SkipEmptyParts)) {
            bool isNumber = false;
            double const number = part.toDouble(&isNumber);
            if (!isNumber || !std::isfinite(number))
                return {};
            numbers.push_back(number);
        }
    }
    return numbers;
}

std::optional<QPointF> pointOf(Metadata const& metadata)
{
    std::vector<double> const numbers = numbersOf(metadata, "uiPosition");
    return numbers.size() >= 2 ? std::optional<QPointF>(QPointF(numbers[0], numbers[1])) : std::nullopt;
}

} // namespace

std::optional<QPointF> storedPosition(Node const& node)
{
    AddRefWrapper<Compound> const compound = node.getAsCompound();
    std::optional<QPointF> const inside = compound ? pointOf(*compound) : std::nullopt;
    return inside ? inside : pointOf(node);
}

std::optional<QRectF> storedArea(Annotation const& annotation)
{
    std::vector<double> const numbers = numbersOf(annotation, "coords");
    if (numbers.size() < 4)
        return std::nullopt;
    return QRectF(numbers[0], numbers[1], numbers[2], numbers[3]).normalized();
}

std::optional<QString> storedColour(Annotation const& annotation)
{
    static QRegularExpression const hexadecimal("^#[0-9a-fA-F]{6}$");
    QString const text = QString::fromUtf8(annotation.getAnnotationMetaDataValue("color").toChar());
    if (hexadecimal.match(text).hasMatch())
        return text;
    std::vector<double> const numbers = numbersOf(annotation, "color");
    if (numbers.size() < 3)
        return std::nullopt;
    auto const byte = [&](std::size_t i) {
        return static_cast<int>(std::lround(255 * std::clamp(numbers[i], 0.0, 1.0)));
    };
    return QString("#%1%2%3")
        .arg(byte(0), 2, 16, QChar('0'))
        .arg(byte(1), 2, 16, QChar('0'))
        .arg(byte(2), 2, 16, QChar('0'));
}

double spreadFor(std::vector<QPointF> const& positions, std::vector<QSizeF> const& sizes)
{
    constexpr double gap = 40;
    // Each pair is compared with each: beyond this many a picture is of no use to anyone.
    std::size_t const count = std::min<std::size_t>(positions.size(), 3000);
    double spread = 0;
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = i + 1; k < count; ++k) {
            double const dx = std::abs(positions[i].x() - positions[k].x());
            double const dy = std::abs(positions[i].y() - positions[k].y());
            double const needX = (sizes[i].width() + sizes[k].width()) / 2 + gap;
            double const needY = (sizes[i].height() + sizes[k].height()) / 2 + gap;
            // Apart in one direction is apart.
            if (dx > 0 || dy > 0)
                spread = std::max(spread, std::min(dx > 0 ? needX / dx : HUGE_VAL, dy > 0 ? needY / dy : HUGE_VAL));
        }
    }
    return spread > 0 ? spread : 1;
}

} // namespace tool

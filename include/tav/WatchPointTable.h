#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/WatchPoint.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace TAV_marlo_v1 {

/// The recorded values of a watch point as a table: one column for each recorded parameter, row i
/// holding the i-th values. A cell holds the texts of the sibling elements of its value, or the
/// whole text where there is no element or the value does not parse. Both lists are cleared first;
/// an empty handle gives an empty table.
TAV_API void getWatchPointTableContent(AddRefWrapper<WatchPoint> const& watchPoint, QList<QString>& header,
                                       QList<QList<QList<QString>>>& rows);

} // namespace TAV_marlo_v1

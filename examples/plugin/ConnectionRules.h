#pragma once

#include <tav/Port.h>

namespace arithmetic {

/// Whether the two ports, in either order, may be connected: one gives and one takes, their types agree,
/// the taker has no source yet, and its node feeds the giver's neither directly nor through others.
bool mayConnect(TAV_marlo_v1::Port const& port, TAV_marlo_v1::Port const& other);

} // namespace arithmetic

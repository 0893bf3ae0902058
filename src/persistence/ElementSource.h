#pragma once

#include "persistence/XmlSource.h"

namespace TAV_marlo_v1 {

/// What the graph vocabulary is read from. Another form of text takes another class here, which hands
/// elements to an ElementHandler and knows positions; nothing above knows about XML.
using ElementSource = XmlSource;

} // namespace TAV_marlo_v1

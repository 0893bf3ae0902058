#pragma once

#include "persistence/XmlSink.h"

namespace TAV_marlo_v1 {

/// What the graph vocabulary is written to. Another form of text takes another class here, with
/// `start`, `attribute`, `text` and `end`; nothing above knows about XML.
using ElementSink = XmlSink;

} // namespace TAV_marlo_v1

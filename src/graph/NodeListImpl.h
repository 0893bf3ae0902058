#pragma once

#include "graph/NamedList.h"

#include <tav/NodeList.h>

namespace TAV_marlo_v1 {

struct NodeList::Impl {
    detail::NamedList<Node> nodes;
    Compound* compound = nullptr;
};

} // namespace TAV_marlo_v1

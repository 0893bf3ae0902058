#pragma once

#include <tav/Node.h>

namespace arithmetic {

/// A node that is asked before one of its outputs is connected.
class ArithmeticNode final : public TAV_marlo_v1::Node {
public:
    using Node::Node;

    bool onPortAddConnection(TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> const& port,
                             TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port> const& other) override;
};

} // namespace arithmetic

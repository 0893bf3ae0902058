#include "ArithmeticNode.h"

#include "ConnectionRules.h"

using namespace TAV_marlo_v1;

namespace arithmetic {

bool ArithmeticNode::onPortAddConnection(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other)
{
    return mayConnect(*port, *other) && Node::onPortAddConnection(port, other);
}

} // namespace arithmetic

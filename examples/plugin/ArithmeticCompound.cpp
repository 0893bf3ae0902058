#include "ArithmeticCompound.h"

#include "ConnectionRules.h"

using namespace TAV_marlo_v1;

namespace arithmetic {

AddRefWrapper<Compound> ArithmeticCompound::createNew(AddRefWrapper<Node> const& owner)
{
    AddRefWrapper<Compound> const compound(new ArithmeticCompound(owner));
    owner->setOwnedCompound(compound);
    return compound;
}

ArithmeticCompound::ArithmeticCompound(AddRefWrapper<Node> const& owner)
    : StandardCompound(owner, nullptr)
{
}

char const* ArithmeticCompound::getSpecializedCompoundTypeName() const
{
    return "Arithmetic";
}

bool ArithmeticCompound::onPortAddConnection(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other)
{
    return mayConnect(*port, *other) && StandardCompound::onPortAddConnection(port, other);
}

} // namespace arithmetic

#include "ArithmeticCompound.h"

#include "ArithmeticNode.h"
#include "ConnectionRules.h"

#include <tav/NodeList.h>

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

AddRefWrapper<Compound> ArithmeticCompound::createNewCompound(char const* name)
{
    // The outside ports belong to the owner node: it has to keep the rules, too.
    AddRefWrapper<Node> const owner(new ArithmeticNode(getAsNode()->getContainer()));
    owner->setName(name ? name : "compound");
    owner->setNodeTypeName("compound");
    AddRefWrapper<Compound> const compound = createNew(owner);
    return nodes().add(owner) ? compound : AddRefWrapper<Compound>();
}

bool ArithmeticCompound::onPortAddConnection(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other)
{
    return mayConnect(*port, *other) && StandardCompound::onPortAddConnection(port, other);
}

} // namespace arithmetic

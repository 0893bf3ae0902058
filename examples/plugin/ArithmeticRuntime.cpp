#include "ArithmeticRuntime.h"

#include "ArithmeticCompound.h"
#include "ArithmeticNode.h"
#include "ArithmeticTypes.h"
#include "Evaluation.h"

#include <tav/NodeList.h>
#include <tav/PortList.h>
#include <tav/PropertyList.h>

#include <cstring>

using namespace TAV_marlo_v1;

namespace arithmetic {

ArithmeticRuntime::ArithmeticRuntime()
    : StandardRuntime("arithmetic")
{
    // Cannot fail: the text is the plug-in's own, and the first library of this runtime.
    (void)addLibraryFromText(libraryText().c_str(), "arithmetic");
}

bool ArithmeticRuntime::isLegalName(char const* name) const
{
    return name && *name && !std::strpbrk(name, "/.");
}

AddRefWrapper<Node> ArithmeticRuntime::makeNode(Container* container, char const*)
{
    return AddRefWrapper<Node>(new ArithmeticNode(container));
}

AddRefWrapper<Compound> ArithmeticRuntime::makeCompound(AddRefWrapper<Node> const& owner, char const*)
{
    return ArithmeticCompound::createNew(owner);
}

void ArithmeticRuntime::doPublishCompound(AddRefWrapper<Compound> const& compound, bool, void* data)
{
    auto* const results = static_cast<PropertyList*>(data);
    if (!results)
        return;
    Evaluation evaluation;
    for (AddRefWrapper<Node> const& node : compound->nodes()) {
        for (AddRefWrapper<Port> const& output : node->outputs()) {
            if (!output->isConnected() && !node->testFlag(eAnyIO))
                results->addStringPair(output->getFullPathName().getName(), evaluation.textOf(output).c_str());
        }
    }
}

} // namespace arithmetic

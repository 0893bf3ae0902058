#pragma once

#include "support/TestGraph.h"

/// A container with an empty top compound, which counts what the library asks of it.
class CountingContainer : public TestContainer {
public:
    explicit CountingContainer(TAV_marlo_v1::Runtime* runtime = nullptr)
        : TestContainer(runtime)
    {
        auto const top = TAV_marlo_v1::Node::createNew(this, "top");
        m_compound = TAV_marlo_v1::Compound::createNew(top, nullptr);
        setTopNode(top);
    }

    TAV_marlo_v1::Compound& compound() const { return *m_compound; }
    void rebuildCompounds() override { ++rebuilds; }

    unsigned rebuilds = 0;
    unsigned executed = 0;

protected:
    /// Does not pass it on to the base class: the library must not depend on that.
    void executeChange() override { ++executed; }

private:
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> m_compound;
};

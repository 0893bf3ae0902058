// One output that feeds N inputs, cut one by one in random order: called at the hub, or at the inputs.

#include "Row.h"
#include "SampleGraph.h"

#include <unordered_set>

namespace bench {

namespace {

struct Hub {
    explicit Hub(unsigned spokes)
    {
        addSampleNodes(document, document.top(), sampleNames(spokes + 1));
        SamplePorts ports(document.top());
        center = ports.out[0];
        inputs.assign(ports.a.begin() + 1, ports.a.end());
        for (AddRefWrapper<Port> const& input : inputs)
            center->addConnection(input, /*copyMetadata=*/false);
    }
    SampleDocument document;
    AddRefWrapper<Port> center;
    std::vector<AddRefWrapper<Port>> inputs;
};

template <class Cut>
void cutAll(Row& row, Cut const& cut)
{
    std::vector<unsigned> const order = shuffled(row.size());
    while (row.next()) {
        Hub const hub(row.size());
        row.require(hub.center->connectedTo().size() == row.size(), "the hub feeds every input");
        unsigned removed = 0;
        row.time(row.size(), [&] {
            for (unsigned const index : order)
                removed += cut(hub.center, hub.inputs[index]) ? 1 : 0;
        });
        row.require(removed == row.size() && !hub.center->isConnected(), "every connection is cut");
    }
}

void cutFromHub(Row& row)
{
    cutAll(row, [](AddRefWrapper<Port> const& center, AddRefWrapper<Port> const& input) {
        return center->removeConnection(input);
    });
}

void cutFromInputs(Row& row)
{
    cutAll(row, [](AddRefWrapper<Port> const& center, AddRefWrapper<Port> const& input) {
        return input->removeConnection(center);
    });
}

/// A hash set at the hub: a vector would be quadratic.
void cutBare(Row& row)
{
    struct Spoke {
        Spoke* source;
        std::unordered_set<Spoke*> fed;
    };
    std::vector<unsigned> const order = shuffled(row.size());
    while (row.next()) {
        Spoke center{};
        std::vector<std::unique_ptr<Spoke>> inputs;
        for (unsigned i = 0; i < row.size(); ++i) {
            inputs.push_back(std::make_unique<Spoke>(Spoke{&center, {}}));
            center.fed.insert(inputs.back().get());
        }
        row.time(row.size(), [&] {
            for (unsigned const index : order) {
                center.fed.erase(inputs[index].get());
                inputs[index]->source = nullptr;
            }
        });
        row.require(center.fed.empty(), "the bare hub feeds nothing");
    }
}

RowEntry const hubEntry("cut a hub, called at the hub", cutFromHub);
RowEntry const inputsEntry("cut a hub, called at the inputs", cutFromInputs);
RowEntry const bareEntry("cut a hub, called at the hub.bare", cutBare);

} // namespace

} // namespace bench

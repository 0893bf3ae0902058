#include "persistence/MetadataWriter.h"

#include "foundation/MetadataText.h"
#include "foundation/PropertyListAccess.h"
#include "persistence/GraphVocabulary.h"

#include <vector>

namespace TAV_marlo_v1 {

using namespace graphtext;

namespace {

void writePairs(ElementSink& sink, PropertyList const& store)
{
    for (unsigned i = 0; i < PropertyListAccess::pairCount(store); ++i) {
        sink.start(kMetadata);
        sink.attribute(kName, PropertyListAccess::key(store, i));
        for (char const* const value : PropertyListAccess::values(store, i)) {
            sink.start(kValue);
            sink.text(value);
            sink.end();
        }
        sink.end();
    }
}

/// A store whose child lists are being written.
struct OpenStore {
    PropertyList const* store;
    unsigned nextChild = 0;
};

/// Writes a store up to its child lists. @return whether there are any, so that it stays open
bool beginStore(ElementSink& sink, PropertyList const& store)
{
    sink.start(kMetadatas);
    writePairs(sink, store);
    if (PropertyListAccess::childCount(store) == 0) {
        sink.end();
        return false;
    }
    sink.start(kPropertyLists);
    return true;
}

} // namespace

void writeMetadataStore(ElementSink& sink, PropertyList const& store)
{
    if (!beginStore(sink, store))
        return;
    std::vector<OpenStore> open{{&store}};
    while (!open.empty()) {
        OpenStore& top = open.back();
        bool const hasMore = top.nextChild < PropertyListAccess::childCount(*top.store);
        if (hasMore) {
            unsigned const index = top.nextChild++;
            PropertyList const& child = PropertyListAccess::child(*top.store, index);
            sink.start(kPropertyList);
            sink.attribute(kName, PropertyListAccess::childName(*top.store, index));
            if (beginStore(sink, child)) {
                open.push_back({&child});
                continue; // its "propertylist" ends with it
            }
        } else {
            sink.end(); // propertylists
            sink.end(); // metadatas
            open.pop_back();
        }
        if (!open.empty())
            sink.end(); // propertylist
    }
}

String metadatasToText(PropertyList const& store)
{
    ElementSink sink;
    writeMetadataStore(sink, store);
    return sink.takeText();
}

} // namespace TAV_marlo_v1

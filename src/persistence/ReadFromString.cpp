// The operations of the interface that read text.

#include "graph/NodeImpl.h"
#include "persistence/CompoundRestore.h"
#include "persistence/GraphReader.h"
#include "persistence/ItemCommit.h"

#include <tav/ChangeBracket.h>
#include <tav/Container.h>

namespace TAV_marlo_v1 {

namespace {

/// Holds back the notifications of the compound and of everything around it.
ChangeBracket openBracket(Compound& compound)
{
    AddRefWrapper<Node> const owner = compound.getAsNode();
    Container* const container = owner ? owner->getContainer() : nullptr;
    return container ? container->createChangeBracket(owner.get()) : ChangeBracket(owner.get());
}

using ReadRoot = bool (GraphReader::*)(char const*, StagedItems&);

/// Reads a text and adds what is in it, or does nothing and says why. Nothing here needs memory once the
/// items are added.
bool readInto(Compound& target, char const* text, ReadRoot readRoot, StagedItems& items, ItemCommit::Names const& names,
              String& errors)
{
    AddRefWrapper<Compound> const kept(&target); // hooks are called
    errors = String();
    GraphReader reader(target);
    if (!(reader.*readRoot)(text, items)) {
        errors = reader.error().c_str();
        return false;
    }
    ChangeBracket const bracket = openBracket(target);
    ItemCommit commit(target, items);
    if (commit.run(names))
        return true;
    errors = commit.error().c_str();
    return false;
}

AddRefWrapper<Node> readOne(Compound& target, char const* text, ReadRoot readRoot, String& errors)
{
    StagedItems items;
    bool const isAdded = readInto(target, text, readRoot, items, {}, errors);
    return isAdded ? items.nodes.front() : AddRefWrapper<Node>();
}

} // namespace

AddRefWrapper<Node> Compound::createNodeFromString(char const* text, String& errors)
{
    return readOne(*this, text, &GraphReader::readNode, errors);
}

AddRefWrapper<Compound> Compound::createNewCompoundFromString(char const* text, String& errors)
{
    AddRefWrapper<Node> const owner = readOne(*this, text, &GraphReader::readCompound, errors);
    return owner ? owner->getAsCompound() : AddRefWrapper<Compound>();
}

bool Compound::createItemsFromString(char const* text, StringArray& createdNodeNames,
                                     StringArray& createdAnnotationNames, StringArray* sourceNodeNames, String* errors)
{
    StagedItems items;
    String unwanted;
    return readInto(*this, text, &GraphReader::readItems, items,
                    {&createdNodeNames, &createdAnnotationNames, sourceNodeNames}, errors ? *errors : unwanted);
}

StatusStr Compound::restoreFromString(char const* text)
{
    AddRefWrapper<Compound> const self(this);
    AddRefWrapper<Node> const owner = getAsNode();
    if (!owner)
        return StatusStr("The compound has no owner node any more.");
    StagedItems items;
    GraphReader reader(*this);
    if (!reader.readCompound(text, items))
        return StatusStr(reader.error().c_str());

    StatusStr status; // made first: after the exchange nothing may need memory
    ChangeBracket const bracket = openBracket(*this);
    CompoundRestore restore(*this, items.nodes.front());
    if (!restore.run())
        status.setErrorString(restore.error().c_str());
    return status;
}

} // namespace TAV_marlo_v1

// The edits of metadata and of annotations.
#include "EditActions.h"
#include "EditSession.h"
#include "EditTargets.h"

#include <tav/AnnotationList.h>
#include <tav/MetadataCommand.h>
#include <tav/ModifyCompoundAnnotationCommand.h>
#include <tav/ModifyNodePortCommand.h>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

// What has metadata can be three things, with a command for each. Without values the entry goes.

/// @throws EditError when an entry is to go that is not there
void requireEntry(bool isThere, StringArray const& values, Words const& words)
{
    if (values.empty() && !isThere)
        throw EditError('"' + words[0] + "\" has no entry \"" + words[1] + '"');
}

/// Of a compound the entries are its own, not those of the node that it belongs to.
void changeNodeEntry(EditSession& session, Node const& node, StringArray const& values, Words const& words)
{
    MetadataCommand command;
    char const* const key = words[1].c_str();
    std::string const path = pathOf(node);
    if (AddRefWrapper<Compound> const compound = node.getAsCompound()) {
        requireEntry(compound->hasMetadata(key), values, words);
        command.setParentCompound(&session.document(), path.c_str());
    } else {
        requireEntry(node.hasMetadata(key), values, words);
        command.setParentNode(&session.document(), path.c_str());
    }
    if (values.empty())
        command.removeMetadata(key);
    else
        command.setMetadataValues(key, values);
    session.push(std::move(command));
}

void changePortEntry(EditSession& session, StringArray const& values, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0], "node, port or annotation");
    char const* const key = words[1].c_str();
    requireEntry(!place.port->getPortMetaDataValue(key).empty(), values, words);
    if (values.size() > 1)
        throw EditError(std::string("an entry of a port has one value, found \"") + values[1] + "\" too");
    ModifyNodePortCommand command;
    command.setParentNode(&session.document(), place.nodePath.c_str());
    command.setPortMetaDataValue(place.ioType, place.name.c_str(), key, values.empty() ? nullptr : values[0]);
    session.push(std::move(command));
}

void changeAnnotationEntry(EditSession& session, Annotation const& annotation, StringArray const& values,
                           Words const& words)
{
    ModifyCompoundAnnotationCommand command;
    char const* const key = words[1].c_str();
    requireEntry(annotation.hasMetadata(key), values, words);
    command.setParentCompound(&session.document(), pathOf(*annotation.getParentCompound()->getAsNode()).c_str());
    if (values.empty())
        command.removeAnnotationMetadata(annotation.getName(), key);
    else
        command.setAnnotationMetadata(annotation.getName(), key, values);
    session.push(std::move(command));
}

/// A path that fits several things means the node, or else the annotation.
void changeEntry(EditSession& session, Words const& words)
{
    StringArray values;
    for (std::size_t i = 2; i < words.size(); ++i)
        values.add(words[i].c_str());
    if (AddRefWrapper<Node> const node = session.document().findNodeFromPath(words[0].c_str()))
        changeNodeEntry(session, *node, values, words);
    else if (AddRefWrapper<Annotation> const found = session.document().findAnnotationFromPath(words[0].c_str()))
        changeAnnotationEntry(session, *found, values, words);
    else
        changePortEntry(session, values, words);
}

/// A command on the annotations of the compound at the path.
ModifyCompoundAnnotationCommand annotationCommand(EditSession& session, std::string const& path)
{
    ModifyCompoundAnnotationCommand command;
    command.setParentCompound(&session.document(), pathOf(*compoundAt(session.document(), path)->getAsNode()).c_str());
    return command;
}

AddRefWrapper<Annotation> annotationOf(EditSession& session, std::string const& parent, std::string const& name)
{
    AddRefWrapper<Annotation> const annotation = compoundAt(session.document(), parent)->annotations()[name.c_str()];
    if (!annotation)
        throw EditError("there is no annotation \"" + name + "\" in \"" + parent + '"');
    return annotation;
}

/// Unlike that of a node, a taken name is refused: what is told to the note next goes by its name.
void requireFreeName(EditSession& session, std::string const& parent, std::string const& name)
{
    requireName(session.document(), name);
    if (compoundAt(session.document(), parent)->annotations()[name.c_str()])
        throw EditError("there is an annotation \"" + name + "\" in \"" + parent + "\" already");
}

} // namespace

void setMetadata(EditSession& session, Words const& words)
{
    changeEntry(session, words);
}

void unsetMetadata(EditSession& session, Words const& words)
{
    changeEntry(session, words);
}

void makeBackdrop(EditSession& session, Words const& words)
{
    requireFreeName(session, words[0], words[1]);
    ModifyCompoundAnnotationCommand command = annotationCommand(session, words[0]);
    command.createAnnotation(Annotation::eBackdrop, words[1].c_str());
    session.push(std::move(command));
}

void makeNote(EditSession& session, Words const& words)
{
    requireFreeName(session, words[0], words[1]);
    ModifyCompoundAnnotationCommand command = annotationCommand(session, words[0]);
    command.createAnnotation(Annotation::eStickyNote, words[1].c_str());
    command.setAnnotationMetadata(words[1].c_str(), "text", StringArray(words[2].c_str()));
    session.push(std::move(command));
}

void removeAnnotation(EditSession& session, Words const& words)
{
    ModifyCompoundAnnotationCommand command = annotationCommand(session, words[0]);
    command.removeAnnotation(annotationOf(session, words[0], words[1])->getName());
    session.push(std::move(command));
}

void renameAnnotation(EditSession& session, Words const& words)
{
    AddRefWrapper<Annotation> const annotation = annotationOf(session, words[0], words[1]);
    ModifyCompoundAnnotationCommand command = annotationCommand(session, words[0]);
    command.renameAnnotation(annotation->getName(), requireName(session.document(), words[2]).c_str());
    session.push(std::move(command));
    if (words[2] != annotation->getName())
        session.host().note(std::string("renamed to ") + annotation->getName());
}

} // namespace tool

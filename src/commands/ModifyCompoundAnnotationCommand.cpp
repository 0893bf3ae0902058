#include <tav/ModifyCompoundAnnotationCommand.h>

#include "commands/AnnotationEdits.h"
#include "commands/CommandScope.h"

#include <tav/AnnotationList.h>

#include <vector>

namespace TAV_marlo_v1 {

struct ModifyCompoundAnnotationCommand::Impl {
    enum class Operation { eCreate, eRemove, eRename, eSetMetadata, eMakeStickyNote };
    struct Record {
        Operation operation;
        String name;
        String argument;    // the new name, or the key
        StringArray values; // none: the entry goes
        Annotation::AnnotationType type = Annotation::eBackdrop;
    };

    bool record(Record record);
    bool perform(Compound& compound, Record const& record);
    bool noteCreated(AddRefWrapper<Annotation> const& annotation);

    detail::CommandTarget target;
    std::vector<Record> records;
    StringArray createdNames;
    detail::EditLog log;
};

ModifyCompoundAnnotationCommand::ModifyCompoundAnnotationCommand()
    : m_impl(std::make_unique<Impl>())
{
}

ModifyCompoundAnnotationCommand::ModifyCompoundAnnotationCommand(ModifyCompoundAnnotationCommand&& other) noexcept =
    default;

ModifyCompoundAnnotationCommand::~ModifyCompoundAnnotationCommand() = default;

bool ModifyCompoundAnnotationCommand::setParentCompound(Container* container, char const* path)
{
    return m_impl && m_impl->target.setCompound(container, path);
}

// ---- recording

bool ModifyCompoundAnnotationCommand::Impl::record(Record record)
{
    records.push_back(std::move(record));
    return true;
}

bool ModifyCompoundAnnotationCommand::createAnnotation(Annotation::AnnotationType type, char const* name)
{
    return m_impl && m_impl->record({Impl::Operation::eCreate, name, {}, {}, type});
}

bool ModifyCompoundAnnotationCommand::removeAnnotation(char const* name)
{
    return m_impl && name && m_impl->record({Impl::Operation::eRemove, name, {}, {}});
}

bool ModifyCompoundAnnotationCommand::renameAnnotation(char const* name, char const* newName)
{
    return m_impl && name && newName && m_impl->record({Impl::Operation::eRename, name, newName, {}});
}

bool ModifyCompoundAnnotationCommand::setAnnotationMetadata(char const* name, char const* key,
                                                            StringArray const& values)
{
    return m_impl && name && key && !values.empty()
           && m_impl->record({Impl::Operation::eSetMetadata, name, key, values});
}

bool ModifyCompoundAnnotationCommand::removeAnnotationMetadata(char const* name, char const* key)
{
    return m_impl && name && key && m_impl->record({Impl::Operation::eSetMetadata, name, key, {}});
}

bool ModifyCompoundAnnotationCommand::createStickyNoteFromBackdrop(char const* name)
{
    return m_impl && name && m_impl->record({Impl::Operation::eMakeStickyNote, name, {}, {}});
}

StringArray const& ModifyCompoundAnnotationCommand::getCreatedAnnotationNames() const
{
    static StringArray const none;
    return m_impl ? m_impl->createdNames : none;
}

// ---- doit and undo

bool ModifyCompoundAnnotationCommand::doit()
{
    if (!m_impl || m_impl->records.empty())
        return false;
    m_impl->log.clear();
    m_impl->createdNames.clear();
    AddRefWrapper<Compound> const compound = m_impl->target.findCompound();
    if (!compound)
        return false;
    auto const bracket = m_impl->target.scope().openBracket();
    bool isWhole = true;
    for (Impl::Record const& record : m_impl->records)
        isWhole = m_impl->perform(*compound, record) && isWhole;
    return isWhole;
}

bool ModifyCompoundAnnotationCommand::Impl::perform(Compound& compound, Record const& record)
{
    if (record.operation == Operation::eCreate)
        return noteCreated(detail::createAnnotation(log, compound, record.type, record.name.toChar()));
    AddRefWrapper<Annotation> const annotation = compound.annotations()[record.name.toChar()];
    if (!annotation)
        return false;
    switch (record.operation) {
    case Operation::eRemove:
        return detail::removeAnnotation(log, *annotation);
    case Operation::eRename:
        return detail::renameAnnotation(log, *annotation, record.argument.toChar());
    case Operation::eSetMetadata:
        return detail::setAnnotationMetadata(log, *annotation, record.argument.toChar(), record.values);
    default:
        return noteCreated(detail::createStickyNote(log, compound, *annotation));
    }
}

bool ModifyCompoundAnnotationCommand::Impl::noteCreated(AddRefWrapper<Annotation> const& annotation)
{
    if (annotation)
        createdNames.add(annotation->getName());
    return static_cast<bool>(annotation);
}

bool ModifyCompoundAnnotationCommand::redo()
{
    return doit();
}

void ModifyCompoundAnnotationCommand::undo()
{
    if (!m_impl)
        return;
    auto const bracket = m_impl->target.scope().openBracket();
    m_impl->log.takeBack(m_impl->target.scope().scene());
    m_impl->createdNames.clear();
}

} // namespace TAV_marlo_v1

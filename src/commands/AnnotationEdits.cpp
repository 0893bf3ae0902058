#include "commands/AnnotationEdits.h"

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"

namespace TAV_marlo_v1::detail {

namespace {

/// One annotation by compound and name.
class AnnotationAddress {
public:
    AnnotationAddress(NodeAddress compound, SharedTextRef name)
        : m_compound(std::move(compound))
        , m_name(std::move(name))
    {
    }
    explicit AnnotationAddress(Annotation const& annotation)
        : AnnotationAddress(NodeAddress(*annotation.getParentCompound()), SharedTextRef(NamedAccess::text(annotation)))
    {
    }
    NodeAddress const& compound() const noexcept { return m_compound; }
    SharedTextRef const& name() const noexcept { return m_name; }
    AddRefWrapper<Annotation> find(Scene const& scene) const
    {
        AddRefWrapper<Compound> const compound = m_compound.findCompound(scene);
        return compound ? compound->annotations()[m_name.chars()] : AddRefWrapper<Annotation>();
    }

private:
    NodeAddress m_compound;
    SharedTextRef m_name;
};

unsigned placeOf(Annotation const& annotation)
{
    return AnnotationAccess::impl(annotation.getParentCompound()->annotations()).annotations.indexOf(&annotation);
}

class CreatedAnnotation final : public Edit {
public:
    explicit CreatedAnnotation(Compound const& compound)
        : m_compound(compound)
        , m_index(compound.annotations().size())
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Compound> const compound = m_compound.findCompound(scene);
        if (!compound)
            return false;
        AddRefWrapper<Annotation> const annotation = compound->annotations()[m_index];
        return !annotation || compound->annotations().remove(annotation);
    }

private:
    NodeAddress m_compound;
    unsigned m_index;
};

class RemovedAnnotation final : public Edit {
public:
    explicit RemovedAnnotation(Annotation const& annotation)
        : m_address(annotation)
        , m_index(placeOf(annotation))
        , m_type(annotation.getType())
        , m_metadata(annotation.getPropertyList())
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Compound> const compound = m_address.compound().findCompound(scene);
        if (!compound || compound->annotations()[m_address.name().chars()])
            return static_cast<bool>(compound);
        AddRefWrapper<Annotation> const annotation = Annotation::createNew(m_type, nullptr, m_address.name().chars());
        annotation->setFromPropertyList(m_metadata);
        return compound->annotations().insert(annotation, m_index);
    }

private:
    AnnotationAddress m_address;
    unsigned m_index;
    Annotation::AnnotationType m_type;
    PropertyList m_metadata;
};

class RenamedAnnotation final : public Edit {
public:
    explicit RenamedAnnotation(Annotation const& annotation)
        : m_former(annotation)
        , m_index(placeOf(annotation))
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Compound> const compound = m_former.compound().findCompound(scene);
        AddRefWrapper<Annotation> const annotation =
            compound ? compound->annotations()[m_index] : AddRefWrapper<Annotation>();
        if (!annotation)
            return false;
        annotation->setName(m_former.name().chars());
        return NamedAccess::text(*annotation).view() == m_former.name().view();
    }

private:
    AnnotationAddress m_former;
    unsigned m_index;
};

class AnnotationMetadataEdit final : public Edit {
public:
    explicit AnnotationMetadataEdit(Annotation const& annotation)
        : m_address(annotation)
        , m_metadata(annotation.getPropertyList())
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Annotation> const annotation = m_address.find(scene);
        if (!annotation)
            return false;
        if (annotation->getPropertyList() != m_metadata)
            annotation->setFromPropertyList(m_metadata);
        return true;
    }

private:
    AnnotationAddress m_address;
    PropertyList m_metadata;
};

class MovedAnnotation final : public Edit {
public:
    MovedAnnotation(Annotation const& annotation, AnnotationAddress arrived)
        : m_former(annotation)
        , m_index(placeOf(annotation))
        , m_arrived(std::move(arrived))
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Compound> const compound = m_former.compound().findCompound(scene);
        if (!compound || compound->annotations()[m_former.name().chars()])
            return static_cast<bool>(compound);
        AddRefWrapper<Annotation> const annotation = m_arrived.find(scene);
        return annotation && CompoundAccess::moveAnnotation(*annotation, *compound, m_index, m_former.name());
    }

private:
    AnnotationAddress m_former;
    unsigned m_index;
    AnnotationAddress m_arrived;
};

} // namespace

AddRefWrapper<Annotation> createAnnotation(EditLog& log, Compound& compound, Annotation::AnnotationType type,
                                           char const* name)
{
    AddRefWrapper<Annotation> annotation;
    log.change(std::make_unique<CreatedAnnotation>(compound), [&] {
        annotation = compound.createCompoundAnnotation(type, name);
        return static_cast<bool>(annotation);
    });
    return annotation;
}

AddRefWrapper<Annotation> createStickyNote(EditLog& log, Compound& compound, Annotation& backdrop)
{
    AddRefWrapper<Annotation> note;
    log.change(std::make_unique<CreatedAnnotation>(compound), [&] {
        note = compound.createStickyNoteFromBackdrop(AddRefWrapper<Annotation>(&backdrop));
        return static_cast<bool>(note);
    });
    return note;
}

bool removeAnnotation(EditLog& log, Annotation& annotation)
{
    AddRefWrapper<Annotation> const kept(&annotation);
    AddRefWrapper<Compound> const compound(annotation.getParentCompound());
    return compound && log.change(std::make_unique<RemovedAnnotation>(annotation), [&] {
        return compound->annotations().remove(kept);
    });
}

bool renameAnnotation(EditLog& log, Annotation& annotation, char const* name)
{
    AddRefWrapper<Annotation> const kept(&annotation);
    SharedTextRef const former(NamedAccess::text(annotation));
    if (former.view() == name)
        return true;
    return log.change(std::make_unique<RenamedAnnotation>(annotation), [&] {
        annotation.setName(name);
        return NamedAccess::text(annotation).view() != former.view();
    });
}

bool setAnnotationMetadata(EditLog& log, Annotation& annotation, char const* key, StringArray const& values)
{
    return log.change(std::make_unique<AnnotationMetadataEdit>(annotation), [&] {
        if (values.empty())
            return annotation.removeMetadata(key);
        if (values.size() == 1)
            return annotation.setMetadataValue(key, values[0]);
        PropertyList store = annotation.getPropertyList();
        if (!store.setStringPairValues(key, values))
            store.addStringPair(key, values);
        annotation.setFromPropertyList(store);
        return true;
    });
}

bool moveAnnotation(EditLog& log, Annotation& annotation, Compound& target)
{
    AddRefWrapper<Annotation> const kept(&annotation);
    SharedTextRef const name(NamedAccess::text(annotation));
    SharedTextRef const free(AnnotationAccess::impl(target.annotations()).annotations.freeName(name.view()));
    AnnotationAddress arrived(NodeAddress(target), free);
    return log.change(std::make_unique<MovedAnnotation>(annotation, std::move(arrived)),
                      [&] { return CompoundAccess::moveAnnotation(annotation, target, kNotFound, name); });
}

} // namespace TAV_marlo_v1::detail

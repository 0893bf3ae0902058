#include "host/PostponedChange.h"

#include <typeinfo>

namespace TAV_marlo_v1 {

namespace {

/// `previous` as the class of `change`, null when it is of another kind.
template <class Change>
Change const* sameKind(Change const&, PostponedChange const& previous)
{
    return typeid(previous) == typeid(Change) ? static_cast<Change const*>(&previous) : nullptr;
}

} // namespace

PostponedChange::~PostponedChange() = default;

bool PostponedChange::repeats(PostponedChange const&) const
{
    return false;
}

PostponedNodeChange::PostponedNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const& compound,
                                         AddRefWrapper<Node> const& node)
    : m_type(type)
    , m_compound(compound)
    , m_node(node)
{
}

void PostponedNodeChange::execute(HostEditor* editor) const
{
    editor->tav_onNodeChange(m_type, m_compound, m_node);
}

bool PostponedNodeChange::repeats(PostponedChange const& previous) const
{
    PostponedNodeChange const* const last = sameKind(*this, previous);
    return last && m_type == last->m_type && m_compound == last->m_compound && m_node == last->m_node;
}

std::unique_ptr<PostponedChange> PostponedNodeChange::keep() const
{
    return std::make_unique<PostponedNodeChange>(*this);
}

PostponedNodePortChange::PostponedNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port)
    : m_type(type)
    , m_port(port)
{
}

void PostponedNodePortChange::execute(HostEditor* editor) const
{
    editor->tav_onNodePortChange(m_type, m_port);
}

bool PostponedNodePortChange::repeats(PostponedChange const& previous) const
{
    PostponedNodePortChange const* const last = sameKind(*this, previous);
    return last && m_type == last->m_type && m_port == last->m_port;
}

std::unique_ptr<PostponedChange> PostponedNodePortChange::keep() const
{
    return std::make_unique<PostponedNodePortChange>(*this);
}

PostponedNodeConnectionChange::PostponedNodeConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                                             AddRefWrapper<Port> const& other)
    : m_type(type)
    , m_port(port)
    , m_other(other)
{
}

void PostponedNodeConnectionChange::execute(HostEditor* editor) const
{
    editor->tav_onConnectionChange(m_type, m_port, m_other);
}

std::unique_ptr<PostponedChange> PostponedNodeConnectionChange::keep() const
{
    return std::make_unique<PostponedNodeConnectionChange>(*this);
}

PostponedCompoundPortChange::PostponedCompoundPortChange(EPortChangeType type, AddRefWrapper<Port> const& port)
    : m_type(type)
    , m_port(port)
{
}

void PostponedCompoundPortChange::execute(HostEditor* editor) const
{
    editor->tav_onCompoundPortChange(m_type, m_port);
}

bool PostponedCompoundPortChange::repeats(PostponedChange const& previous) const
{
    PostponedCompoundPortChange const* const last = sameKind(*this, previous);
    return last && m_type == last->m_type && m_port == last->m_port;
}

std::unique_ptr<PostponedChange> PostponedCompoundPortChange::keep() const
{
    return std::make_unique<PostponedCompoundPortChange>(*this);
}

PostponedCompoundConnectionChange::PostponedCompoundConnectionChange(ECnxChangeType type,
                                                                     AddRefWrapper<Port> const& port,
                                                                     AddRefWrapper<Port> const& other)
    : m_type(type)
    , m_port(port)
    , m_other(other)
{
}

void PostponedCompoundConnectionChange::execute(HostEditor* editor) const
{
    editor->tav_onCompoundConnectionChange(m_type, m_port, m_other);
}

std::unique_ptr<PostponedChange> PostponedCompoundConnectionChange::keep() const
{
    return std::make_unique<PostponedCompoundConnectionChange>(*this);
}

PostponedAnnotationChange::PostponedAnnotationChange(EAnnotationChangeType type,
                                                     AddRefWrapper<Compound> const& compound,
                                                     AddRefWrapper<Annotation> const& annotation)
    : m_type(type)
    , m_compound(compound)
    , m_annotation(annotation)
{
}

void PostponedAnnotationChange::execute(HostEditor* editor) const
{
    editor->tav_onAnnotationChange(m_type, m_compound, m_annotation);
}

bool PostponedAnnotationChange::repeats(PostponedChange const& previous) const
{
    PostponedAnnotationChange const* const last = sameKind(*this, previous);
    return last && m_type == last->m_type && m_compound == last->m_compound && m_annotation == last->m_annotation;
}

std::unique_ptr<PostponedChange> PostponedAnnotationChange::keep() const
{
    return std::make_unique<PostponedAnnotationChange>(*this);
}

} // namespace TAV_marlo_v1

#pragma once

#include <tav/Annotation.h>
#include <tav/Compound.h>
#include <tav/HostEditor.h>
#include <tav/Node.h>
#include <tav/Port.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

/// One notification with its arguments, kept alive until every editor got it.
class PostponedChange {
public:
    virtual ~PostponedChange();
    virtual void execute(HostEditor* editor) const = 0;
    /// Whether this one tells nothing that `previous`, queued right before it, does not tell.
    virtual bool repeats(PostponedChange const& previous) const;
    /// A copy for the pending list.
    virtual std::unique_ptr<PostponedChange> keep() const = 0;

protected:
    PostponedChange() = default;
    PostponedChange(PostponedChange const&) = default;
};

class PostponedNodeChange final : public PostponedChange {
public:
    PostponedNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const& compound, AddRefWrapper<Node> const& node);
    void execute(HostEditor* editor) const override;
    bool repeats(PostponedChange const& previous) const override;
    std::unique_ptr<PostponedChange> keep() const override;

private:
    ENodeChangeType m_type;
    AddRefWrapper<Compound> m_compound;
    AddRefWrapper<Node> m_node;
};

class PostponedNodePortChange final : public PostponedChange {
public:
    PostponedNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port);
    void execute(HostEditor* editor) const override;
    bool repeats(PostponedChange const& previous) const override;
    std::unique_ptr<PostponedChange> keep() const override;

private:
    EPortChangeType m_type;
    AddRefWrapper<Port> m_port;
};

/// Never coalesced: each connection counts.
class PostponedNodeConnectionChange final : public PostponedChange {
public:
    PostponedNodeConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                  AddRefWrapper<Port> const& other);
    void execute(HostEditor* editor) const override;
    std::unique_ptr<PostponedChange> keep() const override;

private:
    ECnxChangeType m_type;
    AddRefWrapper<Port> m_port;
    AddRefWrapper<Port> m_other;
};

class PostponedCompoundPortChange final : public PostponedChange {
public:
    PostponedCompoundPortChange(EPortChangeType type, AddRefWrapper<Port> const& port);
    void execute(HostEditor* editor) const override;
    bool repeats(PostponedChange const& previous) const override;
    std::unique_ptr<PostponedChange> keep() const override;

private:
    EPortChangeType m_type;
    AddRefWrapper<Port> m_port;
};

/// Never coalesced: each connection counts.
class PostponedCompoundConnectionChange final : public PostponedChange {
public:
    PostponedCompoundConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                      AddRefWrapper<Port> const& other);
    void execute(HostEditor* editor) const override;
    std::unique_ptr<PostponedChange> keep() const override;

private:
    ECnxChangeType m_type;
    AddRefWrapper<Port> m_port;
    AddRefWrapper<Port> m_other;
};

class PostponedAnnotationChange final : public PostponedChange {
public:
    PostponedAnnotationChange(EAnnotationChangeType type, AddRefWrapper<Compound> const& compound,
                              AddRefWrapper<Annotation> const& annotation);
    void execute(HostEditor* editor) const override;
    bool repeats(PostponedChange const& previous) const override;
    std::unique_ptr<PostponedChange> keep() const override;

private:
    EAnnotationChangeType m_type;
    AddRefWrapper<Compound> m_compound;
    AddRefWrapper<Annotation> m_annotation;
};

} // namespace TAV_marlo_v1

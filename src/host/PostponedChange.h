#pragma once

#include "foundation/SmallBlocks.h"

#include <tav/Annotation.h>
#include <tav/Compound.h>
#include <tav/HostEditor.h>
#include <tav/Node.h>
#include <tav/Port.h>
#include <tav/Types.h>

#include <memory>
#include <tuple>
#include <typeinfo>

namespace TAV_marlo_v1 {

/// One notification with its arguments, kept alive until every editor got it.
class PostponedChange : public detail::InSmallBlock {
public:
    virtual ~PostponedChange();
    virtual void execute(HostEditor* editor) const = 0;
    /// Whether this one tells nothing that `previous`, queued right before it, does not tell.
    virtual bool repeats(PostponedChange const& previous) const = 0;
    /// A copy for the pending list.
    virtual std::unique_ptr<PostponedChange> keep() const = 0;

protected:
    PostponedChange() = default;
    PostponedChange(PostponedChange const&) = default;
};

/// A change that is told by that callback of the editor. Of one that is coalesced, an equal one right
/// behind it tells nothing new.
template <auto Callback, bool IsCoalesced>
class PostponedCall;

template <class Type, class... Objects, void (HostEditor::*Callback)(Type, AddRefWrapper<Objects> const&...),
          bool IsCoalesced>
class PostponedCall<Callback, IsCoalesced> final : public PostponedChange {
public:
    explicit PostponedCall(Type type, AddRefWrapper<Objects> const&... objects)
        : m_type(type)
        , m_objects(objects...)
    {
    }

    void execute(HostEditor* editor) const override
    {
        std::apply([&](AddRefWrapper<Objects> const&... objects) { (editor->*Callback)(m_type, objects...); },
                   m_objects);
    }

    bool repeats(PostponedChange const& previous) const override
    {
        if (!IsCoalesced || typeid(previous) != typeid(PostponedCall))
            return false;
        auto const& last = static_cast<PostponedCall const&>(previous);
        return m_type == last.m_type && m_objects == last.m_objects;
    }

    std::unique_ptr<PostponedChange> keep() const override { return std::make_unique<PostponedCall>(*this); }

private:
    Type m_type;
    std::tuple<AddRefWrapper<Objects>...> m_objects;
};

using PostponedNodeChange = PostponedCall<&HostEditor::tav_onNodeChange, true>;
using PostponedNodePortChange = PostponedCall<&HostEditor::tav_onNodePortChange, true>;
using PostponedCompoundPortChange = PostponedCall<&HostEditor::tav_onCompoundPortChange, true>;
using PostponedAnnotationChange = PostponedCall<&HostEditor::tav_onAnnotationChange, true>;
// Each connection counts.
using PostponedNodeConnectionChange = PostponedCall<&HostEditor::tav_onConnectionChange, false>;
using PostponedCompoundConnectionChange = PostponedCall<&HostEditor::tav_onCompoundConnectionChange, false>;

} // namespace TAV_marlo_v1

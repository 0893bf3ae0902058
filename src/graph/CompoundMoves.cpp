// Nodes and annotations that change compounds without being taken apart.

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"

namespace TAV_marlo_v1 {

bool CompoundAccess::moveNode(Node& node, Compound& target, unsigned index, detail::SharedTextRef const& name)
{
    AddRefWrapper<Node> const kept(&node);
    AddRefWrapper<Compound> const source(node.getParentCompound());
    AddRefWrapper<Compound> const goal(&target);
    if (!source || !NodeAccess::impl(node).home || NodeAccess::holds(node, target))
        return false;
    if (!source->onNodeRemove(kept) || !target.onNodeAdd(kept))
        return false;

    unsigned const formerIndex = source->nodes().findNode(kept);
    detail::SharedTextRef const formerName(NamedAccess::text(node));
    takeOut(*source, node);
    NamedAccess::setText(node, name);
    try {
        NodeAccess::join(NodeAccess::impl(target.nodes()), node, index);
    } catch (...) {
        NamedAccess::setText(node, formerName);
        NodeAccess::join(NodeAccess::impl(source->nodes()), node, formerIndex, /*nameIsFree=*/true);
        throw;
    }

    source->onNodeRemoved(kept);
    target.onNodeAdded(kept);
    return true;
}

bool CompoundAccess::moveAnnotation(Annotation& annotation, Compound& target, unsigned index,
                                    detail::SharedTextRef const& name)
{
    AddRefWrapper<Annotation> const kept(&annotation);
    AddRefWrapper<Compound> const source(annotation.getParentCompound());
    AddRefWrapper<Compound> const goal(&target);
    if (!source || !source->onAnnotationRemove(kept) || !target.onAnnotationAdd(kept))
        return false;

    detail::NamedList<Annotation>& from = AnnotationAccess::impl(source->annotations()).annotations;
    detail::NamedList<Annotation>& to = AnnotationAccess::impl(target.annotations()).annotations;
    detail::SharedTextRef const formerName(NamedAccess::text(annotation));
    detail::SharedTextRef const free(to.freeName(name.view()));
    unsigned const formerIndex = from.indexOf(&annotation);
    from.take(&annotation);
    NamedAccess::setText(annotation, free);
    try {
        to.insert(index, &annotation);
    } catch (...) {
        NamedAccess::setText(annotation, formerName);
        from.insert(formerIndex, &annotation);
        throw;
    }
    AnnotationAccess::setParent(annotation, &target);

    source->onAnnotationRemoved(kept);
    target.onAnnotationAdded(kept);
    return true;
}

} // namespace TAV_marlo_v1

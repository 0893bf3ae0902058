#pragma once

#include <tav/kit/Document.h>

#include <tav/HostEditor.h>

#include <QtCore/QByteArray>

#include <vector>

namespace TAV_marlo_v1::kit {

/// Hears every change, and whether it is one of what is saved.
class AnyChange : public HostEditor {
public:
    void tav_onConnectionChange(ECnxChangeType, AddRefWrapper<Port> const&, AddRefWrapper<Port> const&) override
    {
        heard(true);
    }
    void tav_onCompoundConnectionChange(ECnxChangeType, AddRefWrapper<Port> const&, AddRefWrapper<Port> const&) override
    {
        heard(true);
    }
    void tav_onCompoundPortChange(EPortChangeType, AddRefWrapper<Port> const&) override { heard(true); }
    void tav_onNodePortChange(EPortChangeType, AddRefWrapper<Port> const&) override { heard(true); }
    void tav_onNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const&,
                          AddRefWrapper<Node> const& node) override
    {
        // Of states, only those of a compound itself are saved, among its flags.
        bool const isUnsavedState = type == eNodeStateChanged && !node->isCompound();
        heard(!(isUnsavedState || type == eNodeMessagesChanged));
    }
    void tav_onAnnotationChange(EAnnotationChangeType, AddRefWrapper<Compound> const&,
                                AddRefWrapper<Annotation> const&) override
    {
        heard(true);
    }

protected:
    virtual void heard(bool isSaved) = 0;
};

/// Remembers that something changed past the undo stacks, which know by themselves where they are.
class ChangeWatch final : public AnyChange {
public:
    bool changed = false;
    bool stackIsActing = false;

protected:
    void heard(bool isSaved) override { changed = changed || (isSaved && !stackIsActing); }
};

/// Registered right behind the watch: when it hears something, the watch has heard all that the stack did,
/// and what follows are changes that editors make because of it.
class EndOfStackChanges final : public AnyChange {
public:
    explicit EndOfStackChanges(ChangeWatch& watch)
        : m_watch(&watch)
    {
    }

protected:
    void heard(bool) override { m_watch->stackIsActing = false; }

private:
    ChangeWatch* m_watch;
};

/// An undo stack as its document sees it.
class DocumentHistory {
public:
    /// The state of now is the saved one.
    virtual void onSaved() = 0;
    /// Another graph is in the document, to which no step belongs.
    virtual void onReplaced() = 0;
    virtual void onDocumentDied() = 0;
    virtual bool isAtSavedState() const noexcept = 0;

protected:
    ~DocumentHistory() = default;
};

struct Document::Impl {
    explicit Impl(Runtime* itsRuntime)
        : runtime(itsRuntime)
    {
    }

    Runtime* runtime;
    AddRefWrapper<Compound> top;
    String path;
    QByteArray fileName;
    ChangeWatch watch;
    EndOfStackChanges endOfStackChanges{watch};
    std::vector<DocumentHistory*> histories; // not owned; they leave when they die
};

} // namespace TAV_marlo_v1::kit

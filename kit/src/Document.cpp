#include <tav/kit/Document.h>

#include "TextFile.h"

#include <tav/HostEditor.h>
#include <tav/Runtime.h>
#include <tav/kit/StandardCompound.h>

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

namespace TAV_marlo_v1::kit {

namespace {

constexpr char kEmptyGraph[] = "<tavCompound name=\"untitled\" type=\"compound\" flag=\"0\">"
                               "<metadatas/><ports/>"
                               "<child_graph><sub_root><nodes/><connections/></sub_root></child_graph>"
                               "</tavCompound>";

/// Hears every change in the graph and remembers that there was one.
class ChangeWatch final : public HostEditor {
public:
    bool changed = false;

    void tav_onConnectionChange(ECnxChangeType, AddRefWrapper<Port> const&, AddRefWrapper<Port> const&) override
    {
        changed = true;
    }
    void tav_onCompoundConnectionChange(ECnxChangeType, AddRefWrapper<Port> const&, AddRefWrapper<Port> const&) override
    {
        changed = true;
    }
    void tav_onCompoundPortChange(EPortChangeType, AddRefWrapper<Port> const&) override { changed = true; }
    void tav_onNodePortChange(EPortChangeType, AddRefWrapper<Port> const&) override { changed = true; }
    void tav_onNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const&,
                          AddRefWrapper<Node> const& node) override
    {
        // Of states, only those of a compound itself are saved, among its flags.
        bool const isUnsavedState = type == eNodeStateChanged && !node->isCompound();
        changed = changed || !(isUnsavedState || type == eNodeMessagesChanged);
    }
    void tav_onAnnotationChange(EAnnotationChangeType, AddRefWrapper<Compound> const&,
                                AddRefWrapper<Annotation> const&) override
    {
        changed = true;
    }
};

StatusStr writeWhole(char const* path, String const& text)
{
    QFileInfo const target(QString::fromUtf8(path));
    // The new text takes the place of what is there: a device or pipe would be gone.
    if (target.exists() && !target.isFile())
        return errorIn(path, "cannot be written: it is no file");
    QSaveFile file(target.filePath());
    qint64 const size = static_cast<qint64>(text.size());
    // Flushed here: commit() would not tell that the last bytes found no room.
    if (file.open(QIODevice::WriteOnly) && file.write(text.toChar(), size) == size && file.flush() && file.commit())
        return StatusStr();
    return errorIn(path, ("cannot be written: " + file.errorString().toUtf8()).constData());
}

} // namespace

struct Document::Impl {
    Runtime* runtime;
    AddRefWrapper<Compound> top;
    String path;
    QByteArray fileName;
    ChangeWatch watch;

    void setPath(char const* newPath)
    {
        path = String(newPath); // may be this very path
        fileName = QFileInfo(QString::fromUtf8(path.toChar())).fileName().toUtf8();
        watch.changed = false;
    }

    StatusStr restore(QByteArray const& text, char const* sourceName)
    {
        StatusStr const status = top->restoreFromString(text.constData());
        return !status ? errorIn(sourceName, status.getErrorString()) : StatusStr();
    }
};

Document::Document(Runtime* runtime)
    : m_impl(new Impl{runtime, {}, {}, {}, {}})
{
    AddRefWrapper<Node> const node = Node::createNew(this, "untitled");
    node->setNodeTypeName("compound");
    m_impl->top = StandardCompound::createNew(node, nullptr);
    setTopNode(node);
    getEditorNotifier().registerEditor(&m_impl->watch);
    if (runtime)
        runtime->registerContainer(this);
}

Document::~Document()
{
    if (m_impl->runtime)
        m_impl->runtime->unregisterContainer(this);
}

void Document::newDocument(char const* name)
{
    // Cannot fail: the text is this file's own.
    (void)m_impl->restore(kEmptyGraph, name);
    m_impl->top->setName(name);
    m_impl->setPath("");
}

StatusStr Document::open(char const* path)
{
    String const kept(path); // may be the document's own path, which goes on the way
    QByteArray bytes;
    StatusStr status = readTextFile(kept.toChar(), bytes);
    if (!status)
        return status;
    status = m_impl->restore(bytes, kept.toChar());
    if (!status)
        return status;
    m_impl->setPath(kept.toChar());
    return StatusStr();
}

StatusStr Document::openText(char const* bytes, unsigned long long size, char const* sourceName)
{
    QByteArray const text(bytes, static_cast<qsizetype>(size));
    StatusStr status = checkIsText(text, sourceName);
    if (!status)
        return status;
    status = m_impl->restore(text, sourceName);
    if (!status)
        return status;
    m_impl->setPath("");
    return StatusStr();
}

StatusStr Document::save()
{
    return saveAs(getFilePath());
}

StatusStr Document::saveAs(char const* path)
{
    if (!path || !*path)
        return errorIn(getName(), "the document has no file yet");
    StatusStr const status = writeWhole(path, m_impl->top->saveToString(nullptr));
    if (!status)
        return status;
    m_impl->setPath(path);
    return StatusStr();
}

bool Document::hasUnsavedChanges() const noexcept
{
    return m_impl->watch.changed;
}

AddRefWrapper<Compound> Document::getTopCompound() const
{
    return m_impl->top;
}

char const* Document::getName() const
{
    return m_impl->fileName.isEmpty() ? m_impl->top->getName() : m_impl->fileName.constData();
}

char const* Document::getFilePath() const
{
    return m_impl->path.toChar();
}

void Document::rebuildCompounds()
{
}

bool Document::isReadOnly() const
{
    QFileInfo const file(QString::fromUtf8(m_impl->path.toChar()));
    return !m_impl->path.empty() && file.exists() && !file.isWritable();
}

Runtime* Document::getRuntime() const
{
    return m_impl->runtime;
}

} // namespace TAV_marlo_v1::kit

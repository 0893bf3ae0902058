#include <tav/kit/Document.h>

#include "DocumentImpl.h"
#include "TextFile.h"

#include <tav/Runtime.h>
#include <tav/kit/Files.h>
#include <tav/kit/StandardCompound.h>
#include <tav/kit/StandardRuntime.h>

#include <QtCore/QFileInfo>

#include <algorithm>

namespace TAV_marlo_v1::kit {

namespace {

constexpr char kEmptyGraph[] = "<tavCompound name=\"untitled\" type=\"compound\" flag=\"0\">"
                               "<metadatas/><ports/>"
                               "<child_graph><sub_root><nodes/><connections/></sub_root></child_graph>"
                               "</tavCompound>";

StatusStr restore(Compound& top, QByteArray const& text, char const* sourceName)
{
    StatusStr const status = top.restoreFromString(text.constData());
    return !status ? errorIn(sourceName, status.getErrorString()) : StatusStr();
}

} // namespace

Document::Document(Runtime* runtime)
    : m_impl(std::make_unique<Impl>(runtime))
{
    AddRefWrapper<Node> const node = Node::createNew(this, "untitled");
    node->setNodeTypeName("compound");
    if (auto* const standard = dynamic_cast<StandardRuntime*>(runtime))
        m_impl->top = standard->makeCompound(node, node->getNodeTypeName());
    else
        m_impl->top = StandardCompound::createNew(node, nullptr);
    setTopNode(node);
    getEditorNotifier().registerEditor(&m_impl->watch);
    getEditorNotifier().registerEditor(&m_impl->endOfStackChanges);
    if (runtime)
        runtime->registerContainer(this);
}

Document::~Document()
{
    while (!m_impl->histories.empty()) {
        DocumentHistory* const history = m_impl->histories.back();
        m_impl->histories.pop_back();
        history->onDocumentDied();
    }
    if (m_impl->runtime)
        m_impl->runtime->unregisterContainer(this);
}

void Document::newDocument(char const* name)
{
    // Cannot fail: the text is this file's own.
    (void)restore(*m_impl->top, kEmptyGraph, name);
    m_impl->top->setName(name);
    replaced("");
}

StatusStr Document::open(char const* path)
{
    String const kept(path); // may be the document's own path, which goes on the way
    QByteArray bytes;
    StatusStr status = readTextFile(kept.toChar(), bytes);
    if (!status)
        return status;
    status = restore(*m_impl->top, bytes, kept.toChar());
    if (!status)
        return status;
    replaced(kept.toChar());
    return StatusStr();
}

StatusStr Document::openText(char const* bytes, unsigned long long size, char const* sourceName)
{
    QByteArray const text(bytes, static_cast<qsizetype>(size));
    StatusStr status = checkIsText(text, sourceName);
    if (!status)
        return status;
    status = restore(*m_impl->top, text, sourceName);
    if (!status)
        return status;
    replaced("");
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
    String const text = m_impl->top->saveToString(nullptr);
    StatusStr const status = writeFile(path, text.toChar(), text.size());
    if (!status)
        return status;
    setPath(path);
    // By index: what a stack tells may end it.
    for (std::size_t i = 0; i < m_impl->histories.size(); ++i)
        m_impl->histories[i]->onSaved();
    return StatusStr();
}

void Document::setPath(char const* path)
{
    m_impl->path = String(path); // may be this very path
    m_impl->fileName = QFileInfo(QString::fromUtf8(m_impl->path.toChar())).fileName().toUtf8();
    m_impl->watch.changed = false;
}

void Document::replaced(char const* path)
{
    setPath(path);
    for (std::size_t i = 0; i < m_impl->histories.size(); ++i)
        m_impl->histories[i]->onReplaced();
}

bool Document::hasUnsavedChanges() const noexcept
{
    if (m_impl->watch.changed)
        return true;
    return std::any_of(m_impl->histories.begin(), m_impl->histories.end(),
                       [](DocumentHistory const* history) { return !history->isAtSavedState(); });
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

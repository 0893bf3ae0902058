#include <tav/CopyPasteCommandBase.h>

#include <QClipboard>
#include <QGuiApplication>

namespace TAV_marlo_v1 {

namespace {

struct ClipboardState {
    bool usesLocal = false;
    bool fallsBack = false; // the last write to the system clipboard did not read back equal
    String localText;
};

/// Never destroyed: static objects of other modules may copy until the very end.
ClipboardState& state()
{
    static ClipboardState* const state = new ClipboardState;
    return *state;
}

/// Null without a GUI application.
QClipboard* systemClipboard()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ? QGuiApplication::clipboard() : nullptr;
}

} // namespace

void CopyPasteCommandBase::setClipboardData(char const* text)
{
    String const data(text ? text : "");
    QClipboard* const clipboard = state().usesLocal ? nullptr : systemClipboard();
    if (clipboard) {
        clipboard->setText(QString::fromUtf8(data.toChar()), QClipboard::Clipboard);
        // Byte by byte, as what is no UTF-8 is another text by now.
        state().fallsBack = data != clipboard->text(QClipboard::Clipboard).toUtf8().constData();
        if (!state().fallsBack)
            return;
    }
    state().localText = data;
}

String CopyPasteCommandBase::getClipboardData()
{
    QClipboard* const clipboard = state().usesLocal || state().fallsBack ? nullptr : systemClipboard();
    QString const text = clipboard ? clipboard->text(QClipboard::Clipboard) : QString();
    return text.isEmpty() ? state().localText : String(text.toUtf8().constData());
}

bool CopyPasteCommandBase::useLocalClipboard()
{
    return state().usesLocal;
}

void CopyPasteCommandBase::setUseLocalClipboard(bool local)
{
    state().usesLocal = local;
}

} // namespace TAV_marlo_v1

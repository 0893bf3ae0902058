#include <tav/kit/Files.h>

#include "TextFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QStringList>

#include <algorithm>
#include <string>

namespace TAV_marlo_v1::kit {

namespace {

/// Whether Windows takes the name for a device, whatever folder and ending it comes with.
bool isDeviceOfWindows(QStringView name)
{
    QString const stem = name.left(name.indexOf('.')).trimmed().toString().toUpper();
    if (stem == "CON" || stem == "PRN" || stem == "AUX" || stem == "NUL" || stem == "CONIN$" || stem == "CONOUT$")
        return true;
    // The ports, whose number may be a superscript, too.
    bool const isPort = stem.size() == 4 && (stem.startsWith("COM") || stem.startsWith("LPT"));
    return isPort && QStringView(u"123456789\u00b9\u00b2\u00b3").contains(stem[3]);
}

bool isForbiddenOnWindows(QChar c)
{
    return c < QChar(' ') || QStringView(u"<>:\"|?*").contains(c);
}

/// What is wrong with one part of a path, empty when nothing is.
QString partFault(QStringView part)
{
    if (part == u"." || part == u"..")
        return {};
    auto const forbidden = std::find_if(part.begin(), part.end(), isForbiddenOnWindows);
    if (forbidden != part.end() && *forbidden < QChar(' '))
        return "a control character is in it";
    if (forbidden != part.end())
        return QString("\"%1\" has \"%2\" in it").arg(part).arg(*forbidden);
    if (part.endsWith('.') || part.endsWith(' '))
        return QString("\"%1\" ends with a %2").arg(part, part.endsWith('.') ? QString("dot") : QString("blank"));
    return {};
}

/// The path behind what stands for a drive, a share or the long form of a path.
QStringView withoutRoot(QStringView path)
{
    if (path.startsWith(u"//?/"))
        path = path.mid(4);
    bool const hasDrive = path.size() > 1 && path[1] == ':' && path[0].toUpper() >= 'A' && path[0].toUpper() <= 'Z';
    return hasDrive ? path.mid(2) : path;
}

String toString(QString const& text)
{
    return String(text.toUtf8().constData());
}

} // namespace

StatusStr writeFile(char const* path, char const* bytes, unsigned long long size)
{
    String const fault = pathFault(path);
    if (!fault.empty())
        return errorIn(path, (std::string("cannot be written: ") + fault.toChar()).c_str());
    QFileInfo const target(QString::fromUtf8(path));
    // The new file takes the place of what is there: a device or pipe would be gone.
    if (target.exists() && !target.isFile())
        return errorIn(path, "cannot be written: it is no file");
    QSaveFile file(target.filePath());
    qint64 const wanted = static_cast<qint64>(size);
    // Flushed here: commit() would not tell that the last bytes found no room.
    if (file.open(QIODevice::WriteOnly) && file.write(bytes, wanted) == wanted && file.flush() && file.commit())
        return StatusStr();
    return errorIn(path, ("cannot be written: " + file.errorString().toUtf8()).constData());
}

String pathFault([[maybe_unused]] char const* path)
{
#if defined(_WIN32)
    return windowsPathFault(path);
#else
    return String();
#endif
}

String windowsPathFault(char const* path)
{
    QString const whole = QString::fromUtf8(path).replace('\\', '/');
    if (whole.startsWith("//./"))
        return toString("it is the path of a device, not of a file");
    QList<QStringView> const parts = withoutRoot(whole).split('/', Qt::SkipEmptyParts);
    for (QStringView const part : parts) {
        QString const fault = partFault(part);
        if (!fault.isEmpty())
            return toString("Windows has no such file names: " + fault);
    }
    if (!parts.isEmpty() && isDeviceOfWindows(parts.back()))
        return toString(QString("\"%1\" is the name of a device on Windows, not of a file").arg(parts.back()));
    return String();
}

} // namespace TAV_marlo_v1::kit

#include "TextFile.h"

#include <tav/kit/Files.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <string>

namespace TAV_marlo_v1::kit {

StatusStr errorIn(char const* sourceName, char const* message)
{
    std::string const text = std::string(sourceName ? sourceName : "text") + ": " + message;
    return StatusStr(text.c_str());
}

StatusStr readTextFile(char const* path, QByteArray& bytes)
{
    String const fault = pathFault(path);
    if (!fault.empty())
        return errorIn(path, (std::string("cannot be read: ") + fault.toChar()).c_str());
    QString const name = QString::fromUtf8(path);
    if (QFileInfo(name).isDir())
        return errorIn(path, "cannot be read: it is a folder");
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return errorIn(path, ("cannot be read: " + file.errorString().toUtf8()).constData());
    bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return errorIn(path, ("cannot be read: " + file.errorString().toUtf8()).constData());
    return checkIsText(bytes, path);
}

StatusStr checkIsText(QByteArray const& bytes, char const* sourceName)
{
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff"))
        return errorIn(sourceName, "line 1, column 1: not UTF-8 text: found the mark of UTF-16, expected UTF-8");
    if (bytes.contains('\0'))
        return errorIn(sourceName, "line 1, column 1: not UTF-8 text: found a NUL byte, expected UTF-8");
    return StatusStr();
}

} // namespace TAV_marlo_v1::kit

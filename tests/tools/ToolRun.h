#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string>

/// What one run of the command-line tool left behind.
struct ToolRun {
    int exitCode = -1; // -1: it crashed, hung or did not start
    QByteArray out;
    QByteArray err;

    std::string errors() const { return err.toStdString(); }
    QString firstError() const { return QString::fromUtf8(err).section('\n', 0, 0); }
};

/// Runs the tool in a folder. A run that does not end within `seconds` is ended.
ToolRun runTool(QStringList const& arguments, QByteArray const& input = {}, QString const& folder = {},
                int seconds = 60);

QString exampleFile(char const* relativePath);
QByteArray readBytes(QString const& path);
void writeBytes(QString const& path, QByteArray const& bytes);

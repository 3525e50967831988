#pragma once

#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A command that comes first in PATH while this lives, and writes down what it is called with.
class FakeCommand {
public:
    explicit FakeCommand(const QString& name, int status = 0) : m_path(qgetenv("PATH")) {
        QFile script(m_folder.filePath(name));
        script.open(QIODevice::WriteOnly);
        // Each argument ends in a line that no path has, and the whole appears at once.
        script.write(QStringLiteral("#!/bin/sh\n"
                                    "for each; do printf '%s\\n--\\n' \"$each\"; done >'%1.part'\n"
                                    "mv '%1.part' '%1'\n"
                                    "exit %2\n")
                         .arg(m_folder.filePath(QStringLiteral("called")))
                         .arg(status)
                         .toUtf8());
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
        script.close();
        qputenv("PATH", m_folder.path().toUtf8() + ':' + m_path);
    }

    ~FakeCommand() { qputenv("PATH", m_path); }

    FakeCommand(const FakeCommand&) = delete;
    FakeCommand& operator=(const FakeCommand&) = delete;

    bool wasCalled() const { return QFile::exists(m_folder.filePath(QStringLiteral("called"))); }

    /// Of the last call; forgets it.
    QStringList takeArguments() const {
        QFile file(m_folder.filePath(QStringLiteral("called")));
        file.open(QIODevice::ReadOnly);
        QStringList arguments = QString::fromUtf8(file.readAll()).split(QStringLiteral("\n--\n"));
        arguments.removeLast();
        file.remove();
        return arguments;
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_path;
};

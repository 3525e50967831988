#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Collects what is logged while it lives, one line a message, each after its level: "D ", "W ", "C " or "I
/// ".
class LoggedLines {
public:
    LoggedLines() {
        lines().clear();
        m_previous =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
                lines() << QLatin1String("DWCFI").mid(type, 1) + QLatin1Char(' ') + text;
            });
    }

    ~LoggedLines() { qInstallMessageHandler(m_previous); }

    LoggedLines(const LoggedLines&) = delete;
    LoggedLines& operator=(const LoggedLines&) = delete;

    static std::string text() { return lines().join(QLatin1Char('\n')).toStdString(); }

private:
    static QStringList& lines() {
        static QStringList all;
        return all;
    }

    QtMessageHandler m_previous = nullptr;
};

#pragma once

#include <QObject>
#include <QString>

#include <chrono>

class MainWindow;

/// Writes a picture of the main window, with the first project selected, once its table has its rows, those
/// of a search that is going on included, and quits. Exit status 1 where the picture cannot be written, or
/// where that takes too long.
class Screenshot : public QObject {
    Q_OBJECT

public:
    /// window outlives this object.
    Screenshot(
        MainWindow& window, QString file, std::chrono::milliseconds patience = std::chrono::seconds(30));

private:
    void takeWhenSearched();
    void takeWhenReloaded();
    void takeWhenFilled();
    void take();
    void giveUp();

    MainWindow& m_window;
    QString m_file;
};

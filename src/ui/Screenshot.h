#pragma once

#include <QObject>
#include <QString>

#include <chrono>

class MainWindow;
class QPixmap;

/// Writes a picture of the main window, with the first project selected, once its table has its rows, those
/// of a search that is going on included, and quits. The picture takes the place of a file or a link of its
/// name only once it is whole. Exit status 1 where the picture cannot be written, or
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
    bool write(const QPixmap& picture) const;
    void giveUp();

    MainWindow& m_window;
    QString m_file;
};

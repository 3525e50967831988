#include "ui/Screenshot.h"

#include "app/logging/PrintableText.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "platform/FileCopy.h"
#include "ui/MainWindow.h"
#include "ui/details/DetailsPane.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include <cstdio>
#include <utility>

using Stemhaven::ProjectMonitor;

Screenshot::Screenshot(MainWindow& window, QString file, std::chrono::milliseconds patience)
    : m_window(window),
      m_file(std::move(file)) {
    connect(&window, &MainWindow::firstLoaded, this, &Screenshot::takeWhenSearched);
    QTimer::singleShot(patience, this, &Screenshot::giveUp);
}

void Screenshot::takeWhenSearched() {
    auto& monitor = ProjectMonitor::instance();
    if (monitor.isSearching())
        connect(&monitor, &ProjectMonitor::projectsDbModified, this, &Screenshot::takeWhenReloaded);
    else
        QMetaObject::invokeMethod(this, &Screenshot::takeWhenFilled, Qt::QueuedConnection);
}

void Screenshot::takeWhenReloaded() {
    // Behind the reload that the window has just asked for.
    auto task = std::make_shared<Stemhaven::SimpleTask>([] {});
    task->setSuccessCallback([self = QPointer(this)](const std::shared_ptr<Stemhaven::Task>&) {
        if (self)
            self->takeWhenFilled();
    });
    Stemhaven::TaskManager::instance().addTask(task);
}

void Screenshot::takeWhenFilled() {
    if (m_window.selectFirstProject())
        connect(
            m_window.findChild<DetailsPane*>(), &DetailsPane::filled, this, &Screenshot::take,
            Qt::UniqueConnection);
    else
        take();
}

void Screenshot::giveUp() {
    std::fputs("The main window was not filled in time, there is no picture of it.\n", stderr);
    QCoreApplication::exit(1);
}

bool Screenshot::write(const QPixmap& picture) const {
    const QFileInfo file(m_file);
    // Links above the file are the user's own. A pipe or a device is not to be replaced by a picture.
    const QString folder = QDir(file.absolutePath()).canonicalPath();
    if (folder.isEmpty() || (file.exists() && !file.isFile() && !file.isSymLink()))
        return false;
    QBuffer bytes;
    return bytes.open(QIODevice::WriteOnly) && picture.save(&bytes, file.suffix().toUtf8().constData()) &&
        Stemhaven::replaceFile(folder + QLatin1Char('/') + file.fileName(), bytes.data());
}

void Screenshot::take() {
    const bool written = write(m_window.grab());
    if (!written)
        Logging::printLine(
            stderr, QStringLiteral("Could not write the picture to %1").arg(Logging::printable(m_file)));
    QCoreApplication::exit(written ? 0 : 1);
}

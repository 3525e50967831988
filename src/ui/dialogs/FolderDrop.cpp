#include "ui/dialogs/FolderDrop.h"

#include "project/BundleSuffixes.h"
#include "ui/dialogs/FolderAdder.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

/// The local folders among what is dragged; a project bundle, though a folder, is none to look for projects
/// in.
QStringList foldersIn(const QMimeData* data) {
    QStringList folders;
    for (const QUrl& url : data->urls()) {
        const QString path = url.toLocalFile();
        if (!path.isEmpty() && QFileInfo(path).isDir() && !Stemhaven::isBundlePath(path))
            folders.append(path);
    }
    return folders;
}

} // namespace

FolderDrop::FolderDrop(QWidget& window, FolderAdder& adder) : QObject(&window), m_adder(adder) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FolderDrop::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop)
        return QObject::eventFilter(watched, event);

    auto* drop = static_cast<QDropEvent*>(event);
    const QStringList folders = foldersIn(drop->mimeData());
    if (folders.isEmpty())
        return true;
    if (event->type() == QEvent::Drop) {
        for (const QString& folder : folders)
            m_adder.add(folder);
    }
    drop->acceptProposedAction();
    return true;
}

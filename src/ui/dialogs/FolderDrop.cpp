#include "ui/dialogs/FolderDrop.h"

#include "project/BundleSuffixes.h"
#include "ui/dialogs/FolderAdder.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QLineEdit>
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

FolderDrop::FolderDrop(QWidget& window, FolderAdder& adder)
    : QObject(&window),
      m_window(window),
      m_adder(adder) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

void FolderDrop::coverFields() {
    const auto fields = m_window.findChildren<QLineEdit*>();
    for (QLineEdit* field : fields)
        field->installEventFilter(this);
}

bool FolderDrop::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);

    auto* drop = static_cast<QDropEvent*>(event);
    if (watched != &m_window && !drop->mimeData()->hasUrls())
        return false; // a text, which is the field's
    const QStringList folders = foldersIn(drop->mimeData());
    if (folders.isEmpty()) {
        drop->ignore();
        return true;
    }
    if (event->type() == QEvent::Drop) {
        for (const QString& folder : folders)
            m_adder.add(folder);
    }
    drop->acceptProposedAction();
    return true;
}

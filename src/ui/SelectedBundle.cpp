#include "ui/SelectedBundle.h"

#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "platform/FileManager.h"

#include <QFileInfo>

#include <utility>

SelectedBundle::SelectedBundle(QString path, bool isMissing)
    : m_path(std::move(path)),
      m_isMissing(isMissing) {}

void SelectedBundle::open() const {
    run(tr("Could not open selected project!"), tr("Could not open selected project"),
        [this] { return Stemhaven::openProject(m_path); });
}

void SelectedBundle::showInFinder() const {
    const QString title =
        Stemhaven::hasFinder() ? tr("Could not show in Finder") : tr("Could not show in File Manager");
    run(title, title, [this] { return Stemhaven::revealInFileManager(m_path); });
}

void SelectedBundle::showPackageContents() const {
    const QString title = tr("Could not show package contents");
    run(title, title,
        [this] { return Stemhaven::revealInFileManager(m_path + QStringLiteral("/Alternatives/")); });
}

void SelectedBundle::run(
    const QString& titleWhenGone, const QString& titleWhenRefused,
    const std::function<int()>& command) const {
    if (m_isMissing || !QFileInfo::exists(m_path)) {
        Stemhaven::guarded(titleWhenGone, [] { throw Stemhaven::Exception(tr("Project wasn't found")); });
        return;
    }
    Stemhaven::guarded(titleWhenRefused, [&] {
        const int status = command();
        if (status == 0)
            return;
        const QString code = tr("Error code: %1").arg(status);
        if (status != Stemhaven::openerIsMissing)
            throw Stemhaven::Exception(code);
        throw Stemhaven::Exception(
            tr("The command xdg-open is missing, which opens files with the programs of your desktop. "
               "Install the "
               "package xdg-utils, then try again.") +
            QStringLiteral("\n") + code);
    });
}

#pragma once

#include <QCoreApplication>
#include <QString>

#include <functional>

/// The bundle of the selected project, to be opened or shown by the desktop. What cannot be done is reported
/// to the user.
class SelectedBundle {
    Q_DECLARE_TR_FUNCTIONS(SelectedBundle)

public:
    /// isMissing: it is known not to be there, and nobody looks, as a drive that is gone may not answer.
    explicit SelectedBundle(QString path, bool isMissing = false);

    void open() const;
    void showInFinder() const;
    void showPackageContents() const;

private:
    /// command gives a status, 0 for success.
    void
    run(const QString& titleWhenGone, const QString& titleWhenRefused,
        const std::function<int()>& command) const;

    QString m_path;
    bool m_isMissing;
};

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
    using Command = std::function<int(const std::function<void(int)>& failed)>;

    /// command gives a status, 0 for success, and may tell of a failure later. withoutProgram is what the
    /// user can do where the desktop has no program for it.
    void
    run(const QString& titleWhenGone, const QString& titleWhenRefused, const QString& withoutProgram,
        const Command& command) const;
    static QString withoutFileManager();
    static void throwFailure(int status, const QString& withoutProgram);

    QString m_path;
    bool m_isMissing;
};

#pragma once

#include <QStringList>
#include <QWidget>

#include <optional>

class ElidedLabel;

/// The line below the table: at its beginning what is shown there, at its end what goes on in the folders.
class StatusLine : public QWidget {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void setStatus(const QString& status);
    /// Stands in the place of the status; an empty one brings the status back.
    void showTip(const QString& tip);

    /// The folders are being looked through.
    void showSearching(int projectsFound);
    void endSearching();
    /// The watched folders that are not there, or cannot be read.
    void showMissingFolders(const QStringList& folders);

private:
    void showNotice();

    ElidedLabel* m_statusLabel;
    ElidedLabel* m_noticeLabel;
    QString m_status;
    std::optional<int> m_projectsFound; ///< while the folders are being looked through
    QStringList m_missingFolders;
};

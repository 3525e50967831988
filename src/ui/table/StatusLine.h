#pragma once

#include <QStringList>
#include <QWidget>

#include <optional>

class ElidedLabel;
class UndoOffer;

/// The line below the table: at its beginning what is shown there, at its end what goes on in the folders.
class StatusLine : public QWidget {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void setStatus(const QString& status);
    /// Follows the status where several projects are selected.
    void showSelectedCount(int projects);
    /// Stands in the place of both; an empty one brings them back.
    void showTip(const QString& tip);
    /// Stands in the place of all three; an empty one brings them back.
    void offerUndo(const QString& done);

    /// Between two statements of the status.
    static const QString separator;

    /// What goes on with the whole catalogue, in the place of the other notices; empty for nothing.
    void showActivity(const QString& activity);
    /// The folders are being looked through.
    void showSearching(int projectsFound);
    void endSearching();
    /// The watched folders that are not there, or cannot be read.
    void showMissingFolders(const QStringList& folders);

signals:
    void undoRequested();
    /// The offer to undo goes away while it has the keyboard.
    void keyboardReleased();

private:
    void showNotice();
    void showStatus();

    ElidedLabel* m_statusLabel;
    ElidedLabel* m_noticeLabel;
    UndoOffer* m_undo;
    QString m_status;
    QString m_activity;
    int m_selectedCount = 0;
    std::optional<int> m_projectsFound; ///< while the folders are being looked through
    QStringList m_missingFolders;
};

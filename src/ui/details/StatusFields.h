#pragma once

#include "ui/sidebar/FolderTreeItemModel.h"

#include <QMap>
#include <QString>
#include <QWidget>

#include <optional>

class QComboBox;

/// The four statuses of one or several projects, each a list to choose from.
class StatusFields : public QWidget {
    Q_OBJECT

public:
    explicit StatusFields(QWidget* parent = nullptr);

    /// Fills the lists anew; what is chosen stays chosen. Nothing is reported.
    void setEntries(const FolderTreeItemModel& entries);
    /// Of all selected projects; empty where they differ. Nothing is reported.
    void setStatuses(const QMap<FilterType, std::optional<qint64>>& statuses);

signals:
    void edited(FilterType type, qint64 statusId);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void statusChosen(FilterType type);
    void choose(FilterType type);

    QMap<FilterType, QComboBox*> m_combos;
    QMap<FilterType, QList<FolderTreeItemModel::Entry>> m_entries;
    QMap<FilterType, std::optional<qint64>> m_statuses;
};

#pragma once

#include <QMenu>
#include <QSet>

/// A sub-menu that gives the selected projects one of some values. The value that all of them have is
/// checked; where they differ, each that some have has a dash and says so.
class ValueMenu : public QMenu {
    Q_OBJECT

public:
    using QMenu::QMenu;

    /// The action may be given a shortcut.
    QAction* addValue(const QString& text, qint64 value);
    void removeValues();

    /// All that the selected projects have.
    void setPresent(const QSet<qint64>& values);

signals:
    void chosen(qint64 value);

protected:
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

private:
    bool haveSome(const QAction& action) const;
    void mark(QAction& action) const;

    QHash<const QAction*, QString> m_texts;
    QSet<qint64> m_present;
};

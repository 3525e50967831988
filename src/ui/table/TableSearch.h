#pragma once

#include <QObject>
#include <QSettings>
#include <QString>
#include <QTimer>

class QLineEdit;

namespace Stemhaven {
class QueryBuilder;
}

/// Narrows the projects to the term in the search field as it is typed, and remembers the term.
class TableSearch : public QObject {
    Q_OBJECT

public:
    /// Starts with the remembered term. Both outlive this object.
    TableSearch(QLineEdit& field, Stemhaven::QueryBuilder& builder, QObject* parent);

    /// As typed; empty when nothing is searched.
    QString term() const;

    /// The last term that was kept, in this run or an earlier one.
    const QString& lastTerm() const { return m_lastTerm; }

    void setTerm(const QString& term);
    void clear();
    /// The term led to something: it is more than a step on the way to another one. So are one that is
    /// confirmed with Return and one that stands for a second.
    void keep();
    void storeTerm();
    /// Takes the remembered terms again.
    void restore();

signals:
    void changed();

private:
    void searchTextChanged(const QString& text);
    void applyToBuilder(const QString& text);

    QLineEdit& m_field;
    Stemhaven::QueryBuilder& m_builder;
    QSettings m_settings;
    QString m_lastTerm;
    QTimer m_standing;
};

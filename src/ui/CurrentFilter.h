#pragma once

#include "database/FilterType.h"

#include <QCoreApplication>
#include <QString>

namespace Stemhaven {
class QueryBuilder;
}

/// The entry of the sidebar that the table is narrowed to.
class CurrentFilter {
    Q_DECLARE_TR_FUNCTIONS(CurrentFilter)

public:
    /// builder outlives this object.
    explicit CurrentFilter(Stemhaven::QueryBuilder& builder) : m_builder(builder) {}

    /// type is collections, genres, tags or a kind of status; any other clears.
    void set(FilterType type, qint64 id, const QString& name);
    /// All projects again.
    void clear();

    /// ALL where there is none.
    FilterType type() const { return m_type; }

    qint64 id() const { return m_id; }

    const QString& name() const { return m_name; }

    /// What the status line says. term is what is searched, empty for nothing.
    QString description(const QString& term) const;

private:
    QString plainDescription() const;

    Stemhaven::QueryBuilder& m_builder;
    FilterType m_type = FilterType::ALL;
    qint64 m_id = -1;
    QString m_name;
};

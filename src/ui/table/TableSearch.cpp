#include "ui/table/TableSearch.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"
#include "database/SqlText.h"

#include <QLineEdit>

TableSearch::TableSearch(QLineEdit& field, Stemhaven::QueryBuilder& builder, QObject* parent)
    : QObject(parent),
      m_field(field),
      m_builder(builder) {
    field.setText(m_settings.value(Stemhaven::SettingsKeys::lastSearchTerm).toString());
    applyToBuilder(field.text());
    connect(&field, &QLineEdit::textChanged, this, [this](const QString& text) {
        Stemhaven::guarded(tr("Search failed."), [&] { searchTextChanged(text); });
    });
    connect(&field, &QLineEdit::editingFinished, this, [this] {
        Stemhaven::guarded(tr("Search save failed."), [this] { storeTerm(); });
    });
}

QString TableSearch::term() const {
    return m_field.text();
}

void TableSearch::setTerm(const QString& term) {
    m_field.setText(term);
}

void TableSearch::clear() {
    m_field.clear();
}

void TableSearch::storeTerm() {
    m_settings.setValue(Stemhaven::SettingsKeys::lastSearchTerm, term());
}

void TableSearch::searchTextChanged(const QString& text) {
    applyToBuilder(text);
    emit changed();
    storeTerm();
}

void TableSearch::applyToBuilder(const QString& text) {
    if (text.isEmpty()) {
        m_builder.clearSearch();
    } else {
        m_lastTerm = text;
        m_builder.search(Stemhaven::escape(text));
    }
}

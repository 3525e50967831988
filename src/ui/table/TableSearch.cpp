#include "ui/table/TableSearch.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"
#include "database/SqlText.h"

#include <QLineEdit>

#include <chrono>

namespace {

constexpr std::chrono::seconds standingTime{1};

} // namespace

TableSearch::TableSearch(QLineEdit& field, Stemhaven::QueryBuilder& builder, QObject* parent)
    : QObject(parent),
      m_field(field),
      m_builder(builder),
      m_lastTerm(m_settings.value(Stemhaven::SettingsKeys::lastKeptSearch).toString()) {
    field.setText(m_settings.value(Stemhaven::SettingsKeys::lastSearchTerm).toString());
    applyToBuilder(field.text());
    m_standing.setSingleShot(true);
    m_standing.setInterval(standingTime);
    connect(&m_standing, &QTimer::timeout, this, &TableSearch::keep);
    connect(&field, &QLineEdit::returnPressed, this, &TableSearch::keep);
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

void TableSearch::keep() {
    m_standing.stop();
    if (term().isEmpty() || term() == m_lastTerm)
        return;
    m_lastTerm = term();
    m_settings.setValue(Stemhaven::SettingsKeys::lastKeptSearch, m_lastTerm);
}

void TableSearch::storeTerm() {
    m_settings.setValue(Stemhaven::SettingsKeys::lastSearchTerm, term());
}

void TableSearch::restore() {
    m_lastTerm = m_settings.value(Stemhaven::SettingsKeys::lastKeptSearch).toString();
    m_field.setText(m_settings.value(Stemhaven::SettingsKeys::lastSearchTerm).toString());
    m_standing.stop();
}

void TableSearch::searchTextChanged(const QString& text) {
    applyToBuilder(text);
    m_standing.start();
    emit changed();
    storeTerm();
}

void TableSearch::applyToBuilder(const QString& text) {
    if (text.isEmpty())
        m_builder.clearSearch();
    else
        m_builder.search(Stemhaven::escape(text));
}

#include "ui/edits/Edit.h"

#include "app/errors/DbException.h"

#include <QDebug>

#include <utility>

Edit::Edit(Texts texts) : m_texts(std::move(texts)) {}

void Edit::logFailure(const Stemhaven::DbException& error) const {
    qCritical().noquote() << m_texts.failureLog;
    qCritical() << error;
}

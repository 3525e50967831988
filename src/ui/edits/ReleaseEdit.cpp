#include "ui/edits/ReleaseEdit.h"

#include "app/errors/Exception.h"
#include "database/UserDataStatements.h"

#include <QCoreApplication>

#include <utility>

namespace ReleaseStatements = Stemhaven::ReleaseStatements;
namespace UserDataStatements = Stemhaven::UserDataStatements;

namespace {

/// To the user no text and an empty one are the same, and so are a number and its text in a flag.
QString meaning(const QString& column, QString literal) {
    const QLatin1Char quote('\'');
    if (column == QLatin1String("completed") || column == QLatin1String("publicly_released"))
        return literal.remove(quote).toLongLong() != 0 ? QStringLiteral("yes") : QStringLiteral("no");
    if (column != QLatin1String("release_date") && literal == QLatin1String("NULL"))
        return QStringLiteral("''");
    return literal;
}

bool meanTheSame(const QStringList& some, const QStringList& others) {
    const QStringList& columns = ReleaseStatements::columns();
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (meaning(columns[i], some.value(i)) != meaning(columns[i], others.value(i)))
            return false;
    }
    return true;
}

} // namespace

ReleaseEdit::ReleaseEdit(Texts texts, qint64 project, Stemhaven::ReleaseDetails details)
    : ProjectEdit(std::move(texts), {project}),
      m_details(std::move(details)) {}

QString ReleaseEdit::stateStatement() const {
    return UserDataStatements::selectLiterals(ReleaseStatements::columns(), projects());
}

QStringList ReleaseEdit::redo(const QList<QStringList>& state) {
    if (state.isEmpty()) {
        throw Stemhaven::Exception(
            QCoreApplication::translate("ReleaseEdit", "The project has no record any more."));
    }
    m_before = state.constFirst().sliced(1);
    if (meanTheSame(m_before, ReleaseStatements::literals(m_details)))
        return {};
    return {ReleaseStatements::update(m_details, projects().constFirst())};
}

QStringList ReleaseEdit::undo(const QList<QStringList>& /*state*/) {
    return {UserDataStatements::setLiterals(ReleaseStatements::columns(), m_before, projects().constFirst())};
}

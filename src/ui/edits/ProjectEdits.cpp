#include "ui/edits/ProjectEdits.h"

#include "database/ReleaseDate.h"
#include "ui/edits/AssociationEdit.h"
#include "ui/edits/ColumnEdit.h"
#include "ui/edits/RecordDeletion.h"
#include "ui/edits/ReleaseEdit.h"

#include <QCoreApplication>
#include <QLocale>

#include <utility>

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(ProjectEdits)
};

QString joined(const QList<qint64>& ids) {
    QStringList texts;
    for (const qint64 id : ids)
        texts.append(QString::number(id));
    return texts.join(QLatin1String(", "));
}

/// What an edit of several projects says of itself: text with their number in it.
QString doneToSeveral(const QList<qint64>& projects, const QString& text) {
    return projects.size() > 1 ? text.arg(QLocale().toString(projects.size())) : QString();
}

/// What takes something away says so of one project as well.
QString doneToAny(const QList<qint64>& projects, const QString& toOne, const QString& toSeveral) {
    return projects.size() == 1 ? toOne : doneToSeveral(projects, toSeveral);
}

/// The entry that log lines and alerts are about: what a status is called in them differs by kind.
struct StatusTexts {
    const char* name;
    const char* failureLog;
    const char* failureTitle;
    const char* done;
};

StatusTexts statusTexts(FilterType type) {
    switch (type) {
    case FilterType::ARRANGEMENT_STATUS:
        return {
            QT_TRANSLATE_NOOP("ProjectEdits", "Arrangement Status"),
            "Error updating project arrangement status!",
            QT_TRANSLATE_NOOP("ProjectEdits", "Could not save arrangement status"),
            QT_TRANSLATE_NOOP("ProjectEdits", "Arrangement status of %1 projects changed")};
    case FilterType::LYRICS_STATUS:
        return {
            QT_TRANSLATE_NOOP("ProjectEdits", "Lyrics Status"), "Error updating project lyrics status!",
            QT_TRANSLATE_NOOP("ProjectEdits", "Could not save lyrics status"),
            QT_TRANSLATE_NOOP("ProjectEdits", "Lyrics status of %1 projects changed")};
    case FilterType::RECORDING_STATUS:
        return {
            QT_TRANSLATE_NOOP("ProjectEdits", "Recording Status"), "Error updating project recording status!",
            QT_TRANSLATE_NOOP("ProjectEdits", "Could not save recording status"),
            QT_TRANSLATE_NOOP("ProjectEdits", "Recording status of %1 projects changed")};
    default:
        return {
            QT_TRANSLATE_NOOP("ProjectEdits", "Mix/Master Status"),
            "Error updating project mix/master status!",
            QT_TRANSLATE_NOOP("ProjectEdits", "Could not save mix/master status"),
            QT_TRANSLATE_NOOP("ProjectEdits", "Mix/Master status of %1 projects changed")};
    }
}

ProjectEdit::Texts associationTexts(const QList<qint64>& projects, FilterType type, qint64 filterId) {
    const QString ids = joined(projects);
    const QString filter = QString::number(filterId);
    ProjectEdit::Texts texts;
    if (type == FilterType::COLLECTIONS)
        texts = {
            Text::tr("Add to Collection"),
            Text::tr("Could not add project to collection"),
            {},
            {},
            Text::tr("%1 projects added to the collection")};
    else if (type == FilterType::GENRES)
        texts = {
            Text::tr("Set Genre"),
            Text::tr("Could not add project to genre"),
            {},
            {},
            Text::tr("Genre of %1 projects set")};
    else
        texts = {
            Text::tr("Add Tag"),
            Text::tr("Could not add tag to project"),
            {},
            {},
            Text::tr("Tag added to %1 projects")};
    texts.done = doneToSeveral(projects, texts.done);
    texts.failureLog =
        QStringLiteral("Could not associate project with new filter! project_id:%1 filterID:%2")
            .arg(ids, filter);
    texts.successLog =
        QStringLiteral("Associated project_id:%1 with %2-ID:%3").arg(ids, filterTypeDebugText(type), filter);
    return texts;
}

ProjectEdit::Texts disassociationTexts(const QList<qint64>& projects, FilterType type, qint64 filterId) {
    const QString ids = joined(projects);
    const QString filter = QString::number(filterId);
    ProjectEdit::Texts texts;
    if (type == FilterType::COLLECTIONS) {
        texts.name = Text::tr("Remove from Collection");
        texts.done = doneToAny(
            projects, Text::tr("Project removed from the collection"),
            Text::tr("%1 projects removed from the collection"));
    } else if (type == FilterType::GENRES) {
        texts.name = Text::tr("Remove from Genre");
        texts.done = doneToAny(
            projects, Text::tr("Project removed from the genre"),
            Text::tr("%1 projects removed from the genre"));
    } else {
        texts.name = Text::tr("Remove from Tag");
        texts.done = doneToAny(
            projects, Text::tr("Tag removed from the project"), Text::tr("Tag removed from %1 projects"));
    }
    texts.failureTitle = Text::tr("Disassociating project with filter failed.");
    texts.failureLog =
        QStringLiteral("Could not disassociate project with new filter! project_id:%1 filterID:%2")
            .arg(ids, filter);
    texts.successLog = QStringLiteral("Disassociated project_id:%1 with %2-ID:%3")
                           .arg(ids, filterTypeDebugText(type), filter);
    return texts;
}

ProjectEdit::Texts ratingTexts(const QList<qint64>& projects, int stars) {
    return {
        Text::tr("Rating"),
        Text::tr("Could not save star rating"),
        QStringLiteral("Error updating project star rating!"),
        {},
        doneToSeveral(
            projects, stars > 0 ? Text::tr("%1 projects rated") : Text::tr("Rating of %1 projects removed"))};
}

ProjectEdit::Texts releaseTexts(const QString& name) {
    return {
        name,
        Text::tr("Could not save project release details"),
        QStringLiteral("Could not update project release details! "),
        {}};
}

/// As the database writes the value of a REAL column.
QString realLiteral(double value) {
    const QString text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    return text.contains(QLatin1Char('.')) ? text : text + QLatin1String(".0");
}

} // namespace

namespace ProjectEdits {

std::unique_ptr<ProjectEdit> starRating(const QList<qint64>& projects, int stars) {
    return std::make_unique<ColumnEdit>(
        ratingTexts(projects, stars), projects,
        ColumnEdit::Change{{QStringLiteral("star_rating")}, {QString::number(stars)}});
}

std::unique_ptr<ProjectEdit> toggledStarRating(qint64 project, int stars) {
    return std::make_unique<ColumnEdit>(
        ratingTexts({project}, stars), QList{project},
        ColumnEdit::Change{{QStringLiteral("star_rating")}, {QString::number(stars)}, {QStringLiteral("0")}});
}

std::unique_ptr<ProjectEdit> progress(const QList<qint64>& projects, int percent, bool completed) {
    const double fraction = percent / 100.0;
    return std::make_unique<ColumnEdit>(
        ProjectEdit::Texts{
            Text::tr("Progress"),
            Text::tr("Could not update progress bar"),
            QStringLiteral("Error updating project progress!"),
            {},
            doneToSeveral(projects, Text::tr("Progress of %1 projects changed"))},
        projects,
        ColumnEdit::Change{
            {QStringLiteral("progress"), QStringLiteral("completed")},
            {realLiteral(fraction), QString::number(completed ? 1 : 0)}});
}

std::unique_ptr<ProjectEdit> status(const QList<qint64>& projects, FilterType type, qint64 statusId) {
    const StatusTexts texts = statusTexts(type);
    return std::make_unique<ColumnEdit>(
        ProjectEdit::Texts{
            Text::tr(texts.name),
            Text::tr(texts.failureTitle),
            QString::fromLatin1(texts.failureLog),
            {},
            doneToSeveral(projects, Text::tr(texts.done))},
        projects, ColumnEdit::Change{{tableNameForStatus(type)}, {QString::number(statusId)}, {}, type});
}

std::unique_ptr<ProjectEdit> ignored(const QList<qint64>& projects, bool ignored) {
    return std::make_unique<ColumnEdit>(
        ProjectEdit::Texts{
            Text::tr("Ignore"),
            Text::tr("Could not ignore project"),
            QStringLiteral("Could not update project's ignored field. "),
            {},
            doneToSeveral(
                projects,
                ignored ? Text::tr("%1 projects ignored") : Text::tr("%1 projects not ignored any more"))},
        projects, ColumnEdit::Change{{QStringLiteral("ignored")}, {QString::number(ignored ? 1 : 0)}});
}

std::unique_ptr<ProjectEdit> association(const QList<qint64>& projects, FilterType type, qint64 filterId) {
    auto texts = associationTexts(projects, type, filterId);
    if (type != FilterType::GENRES)
        return std::make_unique<AssociationEdit>(
            std::move(texts), projects, type, filterId, AssociationEdit::Direction::Associate);
    return std::make_unique<ColumnEdit>(
        std::move(texts), projects,
        ColumnEdit::Change{{QStringLiteral("genre_id")}, {QString::number(filterId)}, {}, type});
}

std::unique_ptr<ProjectEdit> disassociation(const QList<qint64>& projects, FilterType type, qint64 filterId) {
    // Of the genre too: those that have another one keep it.
    return std::make_unique<AssociationEdit>(
        disassociationTexts(projects, type, filterId), projects, type, filterId,
        AssociationEdit::Direction::Disassociate);
}

std::unique_ptr<ProjectEdit> release(qint64 project, const Stemhaven::ReleaseDetails& details) {
    return std::make_unique<ReleaseEdit>(releaseTexts(Text::tr("Release Details")), project, details);
}

std::unique_ptr<ProjectEdit> releaseDate(qint64 project, QDate day) {
    return std::make_unique<ColumnEdit>(
        releaseTexts(Text::tr("Release Date")), QList{project},
        ColumnEdit::Change{
            {QStringLiteral("release_date")}, {QString::number(Stemhaven::storedReleaseDate(day))}});
}

std::unique_ptr<ProjectEdit> deletion(const QList<qint64>& projects) {
    const QString ids = joined(projects);
    return std::make_unique<RecordDeletion>(
        ProjectEdit::Texts{
            Text::tr("Delete record"), Text::tr("Could not delete record"),
            QStringLiteral("Could not delete project record for project_id: ") + ids,
            QStringLiteral("Deleted record for project_id: ") + ids,
            doneToAny(projects, Text::tr("Record deleted"), Text::tr("%1 records deleted"))},
        projects);
}

} // namespace ProjectEdits

#pragma once

#include <QString>

/// The keys of the application's default QSettings.
namespace Stemhaven::SettingsKeys {

inline const QString logLevel = QStringLiteral("logLevel");
inline const QString genreFromDir = QStringLiteral("genreFromDir");
inline const QString fields = QStringLiteral("fields");
inline const QString lastEventId = QStringLiteral("lastEventId");
inline const QString eventCatchupAttempts = QStringLiteral("eventCatchupAttempts");
inline const QString searchWasInProgress = QStringLiteral("searchWasInProgress");
inline const QString lastSearchTerm = QStringLiteral("lastSearchTerm");
inline const QString lastKeptSearch = QStringLiteral("lastKeptSearch");
inline const QString hideCompleted = QStringLiteral("hideCompleted");
inline const QString hideIgnored = QStringLiteral("hideIgnored");
inline const QString projectDetailsSplitterState = QStringLiteral("projectDetailsSplitterState");
inline const QString sidebarSplitterState = QStringLiteral("sidebarSplitterState");
inline const QString filterSliderPos = QStringLiteral("filterSliderPos");
inline const QString sidebarEntryType = QStringLiteral("sidebarEntryType");
inline const QString sidebarEntryId = QStringLiteral("sidebarEntryId");
inline const QString sidebarEntryName = QStringLiteral("sidebarEntryName");
inline const QString foldedGroups = QStringLiteral("foldedGroups");
inline const QString selectedProject = QStringLiteral("selectedProject");
inline const QString detailsWidth = QStringLiteral("detailsWidth");
inline const QString releaseCalendarGeo = QStringLiteral("releaseCalendarGeo");
inline const QString releaseCalendarShowsWeek = QStringLiteral("releaseCalendarShowsWeek");
inline const QString windowGeo = QStringLiteral("windowGeo");
inline const QString lastSortOrder = QStringLiteral("lastSortOrder");
inline const QString lastSortOrderIndex = QStringLiteral("lastSortOrderIndex");
inline const QString columnWidths = QStringLiteral("columnWidths");
inline const QString columnLayout = QStringLiteral("columnLayout");
inline const QString lastSortOrderName = QStringLiteral("lastSortOrderName");

} // namespace Stemhaven::SettingsKeys

#pragma once

#include <QStringList>

class QTranslator;

/// Loads the program's texts in the first of the languages that there are texts in, whatever its country;
/// those in the code are English. The languages are as QLocale::uiLanguages() gives them. Returns whether the
/// translator is to be installed.
bool loadTranslation(QTranslator& translator, const QStringList& languages);

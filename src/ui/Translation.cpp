#include "ui/Translation.h"

#include <QLocale>
#include <QTranslator>

bool loadTranslation(QTranslator& translator, const QStringList& languages) {
    for (const QString& name : languages) {
        const QLocale locale(name);
        if (locale.language() == QLocale::English)
            return false;
        // By its language alone a locale is that of the country where most speak it.
        for (const QLocale& candidate : {locale, QLocale(locale.language())}) {
            if (translator.load(QStringLiteral(":/i18n/Stemhaven_") + candidate.name()))
                return true;
        }
    }
    return false;
}

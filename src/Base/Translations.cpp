#include "Base/Translations.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <memory>

bool Translations::install(const QLocale& locale)
{
    auto catalogue = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!catalogue->load(locale, QStringLiteral("zell"), QStringLiteral("_"),
                         QStringLiteral(":/i18n")))
        return false;
    return QCoreApplication::installTranslator(catalogue.release());
}

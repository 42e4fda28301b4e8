#include "Base/Translations.h"

#include <QLocale>

#include <gtest/gtest.h>

TEST(TranslationsTest, EveryEnglishLocaleHasTheEnglishCatalogue)
{
    EXPECT_TRUE(Translations::install(QLocale(QStringLiteral("en_US"))));
    EXPECT_TRUE(Translations::install(QLocale(QStringLiteral("en_GB"))));
    EXPECT_TRUE(Translations::install(QLocale(QStringLiteral("en"))));
}

TEST(TranslationsTest, WithoutALanguageTheTextsOfTheSourcesStay)
{
    EXPECT_FALSE(Translations::install(QLocale::c()));
    EXPECT_FALSE(Translations::install(QLocale(QStringLiteral("de_DE"))));
}

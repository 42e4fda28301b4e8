#include "Device/Section.h"

#include <QSet>

#include <gtest/gtest.h>

TEST(SectionTest, HasOneRowForEachSectionInItsPlace)
{
    for (std::size_t i = 0; i < Sections::Count; ++i)
        EXPECT_EQ(Sections::all()[i].section, Section(i));
}

TEST(SectionTest, GivesEachSectionNamesOfItsOwn)
{
    QSet<QString> keys;
    QSet<QString> folders;
    QSet<QString> settings;
    for (const SectionFacts& one : Sections::all()) {
        keys.insert(one.key);
        folders.insert(one.folder);
        settings.insert(one.settingsKey);
        EXPECT_EQ(Sections::withKey(one.key), one.section);
    }
    EXPECT_EQ(keys.size(), int(Sections::Count));
    EXPECT_EQ(folders.size(), int(Sections::Count));
    EXPECT_EQ(settings.size(), int(Sections::Count));
    EXPECT_EQ(Sections::withKey("nonsense"), std::nullopt);
}

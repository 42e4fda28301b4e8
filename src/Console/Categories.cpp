#include "Console/Categories.h"

const QString Categories::PlaylistPrefix = QStringLiteral("playlist=");
const QString Categories::AlbumPrefix = QStringLiteral("album=");

std::vector<Section> Categories::ofLibrary()
{
    std::vector<Section> sections;
    for (const SectionFacts& one : Sections::all()) {
        if (one.inLibraryIndex)
            sections.push_back(one.section);
    }
    return sections;
}

std::vector<std::string> Categories::names()
{
    std::vector<std::string> all;
    for (const SectionFacts& one : Sections::all())
        all.emplace_back(one.key);
    return all;
}

bool Categories::isExportable(const QString& what)
{
    return what == u"all" || what == u"media" || what.startsWith(PlaylistPrefix) ||
           what.startsWith(AlbumPrefix) || Sections::withKey(what).has_value();
}

#include "Console/Categories.h"

#include <algorithm>

const QString Categories::VoiceMemos = QStringLiteral("voiceMemos");
const QString Categories::PlaylistPrefix = QStringLiteral("playlist=");
const QString Categories::AlbumPrefix = QStringLiteral("album=");

const std::vector<Categories::Media>& Categories::media()
{
    static const std::vector<Media> categories = {
        {MediaCategory::Music, QStringLiteral("music")},
        {MediaCategory::Movies, QStringLiteral("movies")},
        {MediaCategory::TVShows, QStringLiteral("tvShows")},
        {MediaCategory::Podcasts, QStringLiteral("podcasts")},
        {MediaCategory::Audiobooks, QStringLiteral("audiobooks")},
        {MediaCategory::Ringtones, QStringLiteral("ringtones")},
        {MediaCategory::Books, QStringLiteral("books")},
    };
    return categories;
}

std::vector<std::string> Categories::names()
{
    std::vector<std::string> all;
    for (const Media& one : media())
        all.push_back(one.name.toStdString());
    all.insert(all.end(), {"playlists", VoiceMemos.toStdString(), "cameraRoll", "photos"});
    return all;
}

bool Categories::isExportable(const QString& what)
{
    const std::vector<std::string> all = names();
    return what == u"all" || what == u"media" || what.startsWith(PlaylistPrefix) ||
           what.startsWith(AlbumPrefix) ||
           std::find(all.begin(), all.end(), what.toStdString()) != all.end();
}

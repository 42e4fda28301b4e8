#include "Device/Track.h"

MediaCategory Track::category() const
{
    // The order of the tests decides where two could hold.
    if (type == TVShowTrack)
        return MediaCategory::TVShows;
    if (type == AudiobookTrack)
        return MediaCategory::Audiobooks;
    if (isPodcast || type == PodcastTrack)
        return MediaCategory::Podcasts;
    if (type == MovieTrack || type == OtherMovieTrack)
        return MediaCategory::Movies;
    if (type == RingtoneTrack)
        return MediaCategory::Ringtones;
    if (type == BookTrack)
        return MediaCategory::Books;
    if (type == VoiceMemoTrack)
        return MediaCategory::VoiceMemos;
    return MediaCategory::Music;
}

#include "Device/Track.h"

Section Track::category() const
{
    // The order of the tests decides where two could hold.
    if (type == TVShowTrack)
        return Section::TVShows;
    if (type == AudiobookTrack)
        return Section::Audiobooks;
    if (isPodcast || type == PodcastTrack)
        return Section::Podcasts;
    if (type == MovieTrack || type == OtherMovieTrack)
        return Section::Movies;
    if (type == RingtoneTrack)
        return Section::Ringtones;
    if (type == BookTrack)
        return Section::Books;
    if (type == VoiceMemoTrack)
        return Section::VoiceMemos;
    return Section::Music;
}

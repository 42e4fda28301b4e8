#pragma once

#include "support/TestLibrary.h"

#include <QByteArray>

/// A library of any size, the same each time, spread as real ones are: a dozen tracks to an
/// album, a few albums to an artist, some forty genres, all media kinds, a few dozen playlists.
TestLibrary largeLibrary(int trackCount);

/// That library as an iTunesDB with about 1.9 KB a track, as devices write it.
QByteArray largeITunesDb(int trackCount);

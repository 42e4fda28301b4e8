#pragma once

#include <QString>

#include <vector>

/// A library to be written to a test device. A null text leaves its record out.
struct TestTrack {
    quint32 id = 0;
    QString title;
    QString album;
    QString artist;
    QString genre;
    QString location; ///< ":iPod_Control:Music:F00:ABCD.mp3"
    quint32 milliseconds = 0;
    quint32 mediaKind = 1;
    bool podcast = false;
};

struct TestPlaylist {
    QString name;
    std::vector<quint32> trackIds;
};

struct TestLibrary {
    QString name = QStringLiteral("Test Player"); ///< of the master list
    std::vector<TestTrack> tracks;
    std::vector<TestPlaylist> playlists; ///< without the master list
};

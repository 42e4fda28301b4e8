#pragma once

#include "Device/TrackDb.h"
#include "Device/sql/Database.h"
#include "Device/sql/IdMap.h"
#include "Device/sql/TextPool.h"

#include <QHash>

/// What the readers of SQLite libraries have in common: records found by the low 32 bits of
/// their ids, containers of which the primary one gives the library its name, and files that lie
/// below base locations.
class SqlReader : public TrackDb
{
protected:
    struct Container {
        Playlist* playlist = nullptr;
        bool listed = false;
    };
    /// What is needed only while a database is read. Of equal ids the last one read counts.
    struct Found {
        TextPool texts;
        IdMap<Track> items;
        QHash<qint32, Container> containers;
        QHash<qint32, QString> baseLocations; ///< as device paths
        qint32 primaryContainerId = 0;
    };

    using TrackDb::TrackDb;

    /// The first row's only column.
    static void readPrimaryContainer(Found& found, Statement info);
    /// Columns id and folder.
    void readBaseLocations(Found& found, Statement folders) const;
    /// Columns id and name.
    void readContainers(Found& found, Statement containers);
    /// Adds a track to a playlist, which is listed when it gets its first one. Nothing for an
    /// unknown container.
    void addMember(Found& found, qint32 container, Track& track);
    /// The device path of a file, its location given in UTF-8; null where that is no text.
    [[nodiscard]] QString path(const Found& found, qint32 baseLocation,
                               QByteArrayView location) const;
};

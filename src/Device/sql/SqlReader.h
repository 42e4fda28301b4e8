#pragma once

#include "Device/IdMap.h"
#include "Device/PathsWithNul.h"
#include "Device/TrackDb.h"
#include "Device/sql/Database.h"
#include "Device/sql/TextPool.h"

#include <QHash>

#include <vector>

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
    struct BaseLocation {
        QString folder;
        QString lead; ///< what stands before a location in the path of its file
    };
    /// That an item is in a container.
    struct Member {
        qint32 item = 0;
        qint32 container = 0;
    };
    /// The path of an item's file.
    struct File {
        qint32 item = 0;
        QString path;
    };
    /// What is needed only while a database is read. Of equal ids the last one read counts.
    struct Found {
        TextPool texts;
        IdMap<Track> items;
        QHash<qint32, Container> containers;
        QHash<qint32, BaseLocation> baseLocations;
        BaseLocation noBaseLocation;
        qint32 primaryContainerId = 0;
        PathsWithNul pathsWithNul;
        std::vector<Member> members; ///< that wait to be linked
        std::vector<File> files;     ///< that wait for their items
    };

    using TrackDb::TrackDb;

    /// The first row's only column.
    static void readPrimaryContainer(Found& found, Statement info);
    /// Columns id and folder.
    void readBaseLocations(Found& found, Statement folders) const;
    /// Columns id and name.
    void readContainers(Found& found, Statement containers);
    /// Lists an item as a track when the container is the primary one, else adds it to a
    /// playlist, which is listed when it gets its first one. Nothing for an unknown id. What was
    /// added is seen when `finishMembers` was called.
    void addMember(Found& found, Member member);
    void finishMembers(Found& found);
    /// Gives an item its file; seen when `finishFiles` was called.
    static void addFile(Found& found, File file);
    static void finishFiles(Found& found);
    /// The device path of a file, its location given in UTF-8; null where that is no text.
    [[nodiscard]] QString path(Found& found, qint32 baseLocation, QByteArrayView location) const;

private:
    void link(Found& found, qint32 container, Track& track);
    [[nodiscard]] BaseLocation baseLocation(const QString& folder) const;
};

#pragma once

#include "Device/Problem.h"
#include "Device/itdb/ItdbLists.h"

#include <QCoreApplication>

struct Failure;
namespace ItdbFile
{
struct Content;
}

/// Says what could not be read of a player's binary library.
class ItdbProblems
{
    Q_DECLARE_TR_FUNCTIONS(ItdbProblems)

public:
    enum class Library { Music, Photos };
    enum class Items { Tracks, Playlists, Photos, Albums };

    /// Adds to `problems`, which outlives this.
    ItdbProblems(Library library, ProblemList& problems)
        : _isMusic(library == Library::Music)
        , _problems(problems)
    {
    }

    /// The file could not be read at all.
    void addUnreadable(const Failure& failure);
    /// What is wrong with the file as a whole. Nothing for a file that is as it should be.
    void addFile(const ItdbFile::Content& file, const ItdbLists::Contents& contents);
    /// Items that are missing.
    void addItems(Items items, const ItdbLists::Tally& tally);
    /// Fields that contradict what stands there, each of which cost a part of an item at most.
    void addContradictions(quint64 count);

private:
    void addDamage(const QString& words, const QString& exact = {});

    bool _isMusic;
    ProblemList& _problems;
};

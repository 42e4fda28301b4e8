#pragma once

#include "Base/Failure.h"
#include "Export/ClashRule.h"
#include "Export/ExportReport.h"

#include <QString>

#include <optional>
#include <vector>

struct Playlist;

/// Whom an export job tells how it goes, and asks what only a person can decide. Every call
/// comes on the job's thread, in the order of the job; the host outlives the job.
class ExportHost
{
public:
    ExportHost() = default;
    virtual ~ExportHost() = default;
    ExportHost(const ExportHost&) = delete;
    ExportHost& operator=(const ExportHost&) = delete;

    /// The job starts on `count` items; progress runs from 0 to `count`.
    virtual void showBegin(int count) = 0;
    /// The job comes to the item whose index is `progress`.
    virtual void showProgress(const QString& text, double progress) = 0;
    /// An item is dealt with, in whatever way.
    virtual void showItem(const ExportItem& item) = 0;
    /// The items from now on count from here: a job of several parts comes to its next one. The
    /// chunks of their copies, which the device's delegate hears of, count from 0 in each part.
    virtual void showPart(int /*before*/) {}
    /// A track that was to be played cannot be.
    virtual void showNotPlayed(const QString& /*title*/, const Failure& /*why*/) {}
    /// The job is over; `alert` when the person is to be told by more than the status line.
    virtual void showFinish(bool canceled, bool alert) = 0;

    /// Which rule to apply to a file that exists already; no answer ends the job.
    virtual std::optional<ClashAnswer> askClash(const QString& path) = 0;
    /// Whether the copied files go to the music application as well; no answer starts no job.
    virtual std::optional<bool> askForHandOver() = 0;
    /// A file to be handed to the music application, with the playlists it belongs to.
    virtual void handOver(const QString& path, const std::vector<Playlist*>& playlists) = 0;
};

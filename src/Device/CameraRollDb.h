#pragma once

#include "Device/Photo.h"
#include "Device/PreviewPass.h"
#include "Device/Problem.h"

#include <deque>
#include <memory>
#include <vector>

class Device;
class LibraryProblems;

/// The pictures and videos that a phone keeps in its camera folder. It looks once, at the first
/// call of `photos`, in the order that the device lists them; its photos have only a file and a
/// preview. Owns them and lives as long as its device.
class CameraRollDb
{
public:
    /// Never null: without a camera folder the list is empty.
    static std::unique_ptr<CameraRollDb> create(Device& device);

    CameraRollDb(const CameraRollDb&) = delete;
    CameraRollDb& operator=(const CameraRollDb&) = delete;

    [[nodiscard]] Device& device() const { return _device; }
    const std::vector<Photo*>& photos();
    /// What could not be read, as far as it has been read by now.
    [[nodiscard]] const ProblemList& problems() const { return _problems; }
    /// How far the previews are.
    PreviewPass& previews();
    /// Asks that no further preview is made, without waiting. Nothing is loaded for that.
    void stopPreviews();
    /// Waits until no preview is being made. On the thread of the window only.
    void waitForPreviews();

private:
    explicit CameraRollDb(Device& device);

    void load();
    void parse();
    void parseFolder(const QString& folder, const LibraryProblems& problems);

    Device& _device;
    QString _dcimDir;
    QString _photoDataDir;
    bool _loaded = false;
    ProblemList _problems;
    std::deque<Photo> _ownedPhotos;
    std::vector<Photo*> _photos;
    std::unique_ptr<PreviewPass> _previews; // last: it uses the photos
};

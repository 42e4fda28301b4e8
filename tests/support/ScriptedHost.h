#pragma once

#include "Device/Device.h"
#include "Device/DeviceDelegate.h"
#include "Export/ExportHost.h"

#include <QStringList>

#include <atomic>
#include <functional>

/// A host that writes down what a job tells it and answers as a test says. It is the device's
/// delegate as well, for as long as it lives, and stops copies as a window would.
class ScriptedHost final : public ExportHost, public DeviceDelegate
{
public:
    ScriptedHost() { Device::setDelegate(this); }
    ~ScriptedHost() override { Device::setDelegate(nullptr); }

    void showBegin(int count) override { told.append(QString("begin %1").arg(count)); }
    void showProgress(const QString& text, double progress) override
    {
        told.append(QString("%1 at %2").arg(text).arg(progress));
        if (onItem)
            onItem(int(progress));
    }
    void showItem(const ExportItem& item) override { results.push_back(item.result); }
    void showFinish(bool canceled, bool alert) override
    {
        told.append(QString(canceled ? "canceled" : "finished") + (alert ? "!" : ""));
    }
    std::optional<ClashAnswer> askClash(const QString& path) override
    {
        asked.append(path);
        return clashAnswer;
    }
    std::optional<bool> askForHandOver() override
    {
        ++exportModeQuestions;
        return handsOver;
    }
    void handOver(const QString& path, const std::vector<Playlist*>& playlists) override
    {
        handedOver.append(QString("%1 to %2").arg(path).arg(playlists.size()));
    }
    bool exported(double progress) override
    {
        chunks.push_back(progress);
        if (int(chunks.size()) == stopAtChunk)
            toStop = true;
        return !toStop && (!onChunk || onChunk(int(chunks.size())));
    }
    bool waited(double /*progress*/) override { return !toStop; }

    std::atomic<bool> toStop = false;
    int stopAtChunk = 0;
    std::function<void(int index)> onItem;
    /// Called with the number of each chunk, from 1 on; answers for the delegate.
    std::function<bool(int chunk)> onChunk;
    std::optional<ClashAnswer> clashAnswer = ClashAnswer{KeepBothRule, false};
    std::optional<bool> handsOver = false;

    QStringList told;
    QStringList asked;
    QStringList handedOver;
    int exportModeQuestions = 0;
    std::vector<double> chunks;
    std::vector<ExportItem::Result> results;
};

#pragma once

#include "Device/SectionItems.h"
#include "Export/ExportHost.h"

#include <atomic>
#include <memory>
#include <vector>

class Config;
class Device;
class ExportReport;

/// Exports several parts of a device as one job: the person is asked once where to export to and
/// sees one beginning, one progress and one end; there is one report. On the thread that calls.
class ExportParts final : private ExportHost
{
public:
    /// As for an ExportJob. A part in which the export is given up sets `toStop`, so that the
    /// items of the parts behind it are reported as stopped.
    ExportParts(std::shared_ptr<Device> device, Config& config, ExportHost& host,
                ExportReport& report, std::atomic<bool>& toStop);

    void run(const std::vector<SectionItems>& parts);

private:
    void showBegin(int count) override;
    void showProgress(const QString& text, double progress) override;
    void showItem(const ExportItem& item) override;
    void showFinish(bool canceled, bool alert) override;
    std::optional<ClashAnswer> askClash(const QString& path) override;
    std::optional<bool> askForHandOver() override;
    void handOver(const QString& path, const std::vector<Playlist*>& playlists) override;

    std::shared_ptr<Device> _device;
    Config& _config;
    ExportHost& _host;
    ExportReport& _report;
    std::atomic<bool>& _toStop;
    std::optional<bool> _handsOver = false;
    int _before = 0; ///< items of the parts that are done
    int _begun = 0;  ///< items of the part under way
    bool _canceled = false;
};

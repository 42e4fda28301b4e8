#pragma once

#include "Device/DeviceDelegate.h"
#include "Export/ExportHost.h"

#include <QElapsedTimer>
#include <QString>

#include <optional>

/// An export as the console shows it: a bar on a terminal, a line for each item elsewhere,
/// nothing but the failures when quiet. Lives on the main thread, which also runs the job.
class ConsoleExportHost final : public ExportHost, public DeviceDelegate
{
public:
    explicit ConsoleExportHost(bool quiet);

    void showBegin(int count) override;
    void showProgress(const QString& text, double progress) override;
    void showItem(const ExportItem& item) override;
    void showFinish(bool canceled, bool alert) override;
    /// Asks on a terminal; elsewhere a numbered name is chosen.
    std::optional<ClashAnswer> askClash(const QString& path) override;
    std::optional<bool> askForHandOver() override;
    void handOver(const QString& path, const std::vector<Playlist*>& playlists) override;

    /// Stops the copy once an interrupt came.
    bool exported(double progress) override;

private:
    enum class Style { Quiet, Lines, Bar };

    void drawBar(double progress);
    void clearBar();

    Style _style;
    int _count = 0;
    int _done = 0;
    QString _text;
    QElapsedTimer _lastDrawn;
    /// The answer given "for all". Kept here and not in the settings: this run may have folders
    /// of its own, which must not be saved with it.
    std::optional<ClashAnswer> _answerForAll;
};

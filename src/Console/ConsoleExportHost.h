#pragma once

#include "Device/DeviceDelegate.h"
#include "Export/ExportHost.h"

#include <QElapsedTimer>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

/// An export as the console shows it: a bar on a terminal, a line for each item elsewhere,
/// nothing but the failures when quiet. Lives on the main thread, which also runs the job.
class ConsoleExportHost final : public ExportHost, public DeviceDelegate
{
public:
    explicit ConsoleExportHost(bool quiet);

    /// The folders that the person chose. One that cannot be made is said once, and not of each
    /// item that was to go there.
    void setDestinations(const QStringList& folders) { _destinations = folders; }

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

    /// The chosen folder that an item failed for; null when it failed for itself.
    [[nodiscard]] QString folderAtFault(const ExportItem& item) const;
    void sayItem(const ExportItem& item);
    void drawBar(double progress);
    void clearBar();

    Style _style;
    QStringList _destinations;
    QSet<QString> _saidFolders;
    int _count = 0;
    int _done = 0;
    QString _text;
    QElapsedTimer _lastDrawn;
    /// The answer given "for all". Kept here and not in the settings: this run may have folders
    /// of its own, which must not be saved with it.
    std::optional<ClashAnswer> _answerForAll;
};

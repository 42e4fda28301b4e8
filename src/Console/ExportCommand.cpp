#include "Base/PathName.h"
#include "Console/Categories.h"
#include "Console/Commands.h"
#include "Console/ConsoleExportHost.h"
#include "Console/DeviceChooser.h"
#include "Console/Interrupt.h"
#include "Console/Terminal.h"
#include "Device/PhotoDb.h"
#include "Device/SectionItems.h"
#include "Device/TrackDb.h"
#include "Device/iPhone/PhoneDevice.h"
#include "Export/Config.h"
#include "Export/ExportJob.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("ExportCommand", text);
}

int ruleOf(const QString& clash)
{
    if (clash == u"overwrite")
        return OverwriteRule;
    return clash == u"skip" ? SkipRule : KeepBothRule;
}

/// The settings of this run, which are never saved.
Config settings(const CommandLine& line)
{
    Config config;
    if (!line.clash.isNull())
        config.setCopyRule(ruleOf(line.clash));
    if (!line.destination.isNull()) {
        const QString base = QDir(line.destination).absolutePath();
        for (const SectionFacts& one : Sections::all())
            config.setFolderPath(one.section,
                                 PathName::join(base, QString::fromLatin1(one.folder)));
    }
    return config;
}

/// What the words of the command line stand for, in the order they are exported.
class Selection
{
public:
    explicit Selection(Device& device)
        : _device(device)
        , _library(device.trackDb())
    {
    }

    /// False, after saying why, when `what` names something that is not there.
    bool add(const QString& what)
    {
        if (what.startsWith(Categories::PlaylistPrefix))
            return addPlaylists(what.sliced(Categories::PlaylistPrefix.size()));
        if (what.startsWith(Categories::AlbumPrefix))
            return addAlbums(what.sliced(Categories::AlbumPrefix.size()));
        if (what == u"media")
            _parts.push_back(SectionItems::media(_device));
        else if (what == u"all")
            addAll();
        else if (const std::optional<Section> section = Sections::withKey(what))
            addSection(*section);
        return true;
    }

    void exportAll(ExportJob& job) const
    {
        for (const SectionItems& part : _parts) {
            if (Interrupt::requested())
                return;
            job.exportTracks(part.tracks);
            job.exportPlaylists(part.playlists);
            job.exportPhotos(part.photos);
        }
    }

private:
    bool addPlaylists(const QString& name)
    {
        SectionItems part;
        if (_library)
            std::copy_if(_library->playlists().begin(), _library->playlists().end(),
                         std::back_inserter(part.playlists),
                         [&](const Playlist* playlist) { return playlist->name == name; });
        if (part.playlists.empty()) {
            Terminal::say(tr("There is no playlist named %1.").arg(name));
            return false;
        }
        _parts.push_back(part);
        return true;
    }

    void addAll()
    {
        for (SectionItems& part : SectionItems::everything(_device))
            _parts.push_back(std::move(part));
    }

    bool addAlbums(const QString& name)
    {
        PhotoDb* library = _device.photoDb();
        bool found = false;
        for (const Album* album : library ? library->albums() : std::vector<Album*>()) {
            if (album->name == name) {
                _parts.push_back({{}, {}, album->photos});
                found = true;
            }
        }
        if (!found)
            Terminal::say(tr("There is no photo album named %1.").arg(name));
        return found;
    }

    void addSection(Section section)
    {
        if (std::optional<SectionItems> items = SectionItems::of(_device, section))
            _parts.push_back(std::move(*items));
        else if (_library ||
                 section > Section::Playlists) // else it was said that there is no library
            Terminal::say(tr("The device has no %1.").arg(Sections::key(section)));
    }

    Device& _device;
    TrackDb* _library;
    std::vector<SectionItems> _parts;
};

/// Makes the host the delegate for as long as it lives.
class DelegateScope
{
public:
    explicit DelegateScope(DeviceDelegate& delegate) { Device::setDelegate(&delegate); }
    ~DelegateScope() { Device::setDelegate(nullptr); }
    DelegateScope(const DelegateScope&) = delete;
    DelegateScope& operator=(const DelegateScope&) = delete;
};

void summarize(const ExportReport& report)
{
    using Result = ExportItem::Result;
    const auto count = [&](Result result) {
        return std::count_if(report.items().begin(), report.items().end(),
                             [&](const ExportItem& item) { return item.result == result; });
    };
    QString line = tr("%1 copied").arg(count(Result::Copied));
    for (const Result result :
         {Result::Skipped, Result::Missing, Result::Incomplete, Result::Failed, Result::Stopped}) {
        if (count(result) > 0)
            line +=
                QStringLiteral(", %1 %2").arg(count(result)).arg(ExportItem::resultName(result));
    }
    Terminal::say(line);
}

int exitCode(const ExportReport& report)
{
    if (Interrupt::requested())
        return ExitCode::Stopped;
    const bool stopped =
        std::any_of(report.items().begin(), report.items().end(), [](const ExportItem& item) {
            return item.result == ExportItem::Result::Stopped;
        });
    if (stopped) // the clash question was given up
        return ExitCode::Stopped;
    return report.failureCount() == 0 ? ExitCode::Done : ExitCode::SomeNotCopied;
}
} // namespace

int Commands::exportMedia(const CommandLine& line)
{
    Interrupt::watch();
    PhoneDevice::setInterrupt(Interrupt::requested());
    ConsoleExportHost host(line.quiet);
    const DelegateScope delegate(host);
    const std::shared_ptr<Device> device = DeviceChooser::choose(line.device, line.waitSeconds);
    if (!device)
        return ExitCode::NoDevice;

    ExportReport report;
    if (!line.report.isNull()) {
        // Found out now rather than after an hour of copying.
        const QString problem = report.writeTo(line.report);
        if (!problem.isEmpty()) {
            Terminal::say(line.report + QStringLiteral(": ") + problem);
            return ExitCode::WrongUsage;
        }
    }
    TrackDb* library = device->trackDb();
    if (library)
        (void)library->tracks(); // before any category is asked for
    else
        Terminal::say(tr("The device holds no media library."));
    Selection selection(*device);
    for (const QString& what : line.what) {
        if (!selection.add(what))
            return ExitCode::WrongUsage;
    }
    device->stopPreviews(); // nobody looks at them here

    Config config = settings(line);
    ExportJob job(device, config, host, report, Interrupt::requested());
    selection.exportAll(job);

    if (!line.report.isNull()) {
        const QString problem = report.writeTo(line.report);
        if (!problem.isEmpty()) {
            Terminal::say(line.report + QStringLiteral(": ") + problem);
            return ExitCode::SomeNotCopied;
        }
    }
    if (!line.quiet)
        summarize(report);
    return exitCode(report);
}

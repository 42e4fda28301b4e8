#include "Base/PathName.h"
#include "Console/Commands.h"
#include "Console/ConsoleExportHost.h"
#include "Console/ConsoleSummary.h"
#include "Console/DeviceChooser.h"
#include "Console/ExportSelection.h"
#include "Console/Interrupt.h"
#include "Console/Problems.h"
#include "Console/Terminal.h"
#include "Device/Playlist.h"
#include "Export/Config.h"
#include "Export/ExportJob.h"
#include "Export/ExportPath.h"
#include "Export/ExportPlan.h"
#include "Export/OnDevice.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <set>

namespace
{
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ExportCommand)
};

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

QStringList readersFor(const std::vector<Categories::Wish>& wishes)
{
    QStringList readers;
    for (const Categories::Wish& wish : wishes)
        readers += wish.readers();
    return readers;
}

/// Makes the host the delegate for as long as it lives.
class DelegateScope
{
public:
    explicit DelegateScope(DeviceDelegate& delegate) { Device::setDelegate(&delegate); }
    ~DelegateScope() { Device::setDelegate(nullptr); }
    DelegateScope(const DelegateScope&) = delete;
    DelegateScope& operator=(const DelegateScope&) = delete;
};

/// The folders that the parts are copied into: the one that all of them are in, or each.
QStringList destinations(const std::vector<SectionItems>& parts, const Config& config)
{
    std::set<Section> sections;
    for (const SectionItems& part : parts) {
        for (const Track* track : part.tracks)
            sections.insert(ExportPath::folderOf(*track, nullptr));
        if (!part.playlists.empty())
            sections.insert(Section::Playlists);
        for (const Photo* photo : part.photos)
            sections.insert(ExportPath::folderOf(*photo));
    }
    QStringList folders;
    QStringList parents;
    for (const Section section : sections) {
        folders.append(config.folderPath(section));
        parents.append(PathName::parent(config.folderPath(section)));
    }
    folders.removeDuplicates();
    parents.removeDuplicates();
    return parents.size() == 1 ? parents : folders;
}

QStringList chosenFolders(const Config& config)
{
    QStringList folders;
    for (const SectionFacts& one : Sections::all())
        folders.append(config.folderPath(one.section));
    return folders;
}

/// Every item comes into the report, also where the person has stopped the command by then.
void exportAll(const std::vector<SectionItems>& parts, ExportJob& job)
{
    for (const SectionItems& part : parts) {
        job.exportTracks(part.tracks);
        job.exportPlaylists(part.playlists);
        job.exportPhotos(part.photos);
    }
}

bool wasStopped(const ExportReport& report)
{
    return std::any_of(report.items().begin(), report.items().end(), [](const ExportItem& item) {
        return item.result == ExportItem::Result::Stopped;
    });
}

/// `reportPath` is null where there is no report.
void sayHowItEnded(const std::vector<ExportItem>& items, std::size_t problems,
                   const QStringList& destinations, const QString& reportPath)
{
    const ConsoleSummary summary(items);
    Terminal::say(summary.counts());
    for (const QString& line : summary.reasons())
        Terminal::say(line);
    if (problems > 0)
        Terminal::say(
            Words::tr("%n problem(s) with what the device holds, see above", "", int(problems)));
    if (!destinations.isEmpty())
        Terminal::say(Words::tr("destination: %1").arg(destinations.join(QStringLiteral(", "))));
    if (!reportPath.isNull())
        Terminal::say(Words::tr("report: %1").arg(reportPath));
}

/// Prints what would be copied, and writes nothing.
int plan(const CommandLine& line, Device& device, const ExportSelection& selection,
         Problems& problems)
{
    const Config config = settings(line);
    ExportPlan plan(device, config);
    for (const SectionItems& part : selection.parts()) {
        plan.addTracks(part.tracks);
        plan.addPlaylists(part.playlists);
        plan.addPhotos(part.photos);
    }
    for (const ExportItem& item : plan.items())
        Terminal::printJson(item.toJson() + '\n');
    problems.sayNew();
    const bool isWell = problems.count() == 0 &&
                        std::none_of(plan.items().begin(), plan.items().end(),
                                     [](const ExportItem& item) { return item.isNotCopied(); });
    if (!line.quiet || !isWell)
        sayHowItEnded(plan.items(), problems.count(), destinations(selection.parts(), config), {});
    return isWell ? ExitCode::Done : ExitCode::SomeNotCopied;
}

/// Copies what is selected, and says how that ended.
int copy(const CommandLine& line, const std::shared_ptr<Device>& device,
         const ExportSelection& selection, Problems& problems, ConsoleExportHost& host)
{
    ExportReport report;
    if (!line.report.isNull()) {
        if (OnDevice::wouldLie(line.report, device->localRoot())) {
            Terminal::say(Words::tr("%1 is on the device itself, and nothing is written there.")
                              .arg(line.report));
            return ExitCode::WrongUsage;
        }
        // Found out now rather than after an hour of copying.
        if (const Status followed = report.follow(line.report); !followed) {
            Terminal::say(line.report + QStringLiteral(": ") + followed.failure().text());
            return ExitCode::WrongUsage;
        }
    }
    Config config = settings(line);
    host.setDestinations(chosenFolders(config));
    ExportJob job(device, config, host, report, Interrupt::requested());
    exportAll(selection.parts(), job);
    problems.sayNew();

    const Status written = report.endFollowing();
    if (!written)
        Terminal::say(line.report + QStringLiteral(": ") + written.failure().text());
    const bool isWell = report.notCopiedCount() == 0 && problems.count() == 0 && written;
    if (!line.quiet || !isWell)
        sayHowItEnded(report.items(), problems.count(), destinations(selection.parts(), config),
                      line.report.isNull() ? report.logPath() : line.report);
    if (wasStopped(report)) // by an interrupt, or the question of a clash was given up
        return ExitCode::Stopped;
    return isWell ? ExitCode::Done : ExitCode::SomeNotCopied;
}
} // namespace

int Commands::exportMedia(const CommandLine& line)
{
    ConsoleExportHost host(line.quiet);
    const DelegateScope delegate(host);
    const std::shared_ptr<Device> device = DeviceChooser::choose(line.device, line.waitSeconds);
    if (!device)
        return DeviceChooser::exitCodeWithout();

    ExportSelection selection(*device);
    Problems problems(*device, readersFor(line.wishes));
    for (const Categories::Wish& wish : line.wishes) {
        if (const Status added = selection.add(wish); !added) {
            problems.sayNew(); // maybe that is why
            Terminal::say(added.failure().text());
            return ExitCode::WrongUsage;
        }
    }
    problems.sayNew();
    device->stopPreviews(); // nobody looks at them here
    if (line.dryRun)
        return plan(line, *device, selection, problems);
    return copy(line, device, selection, problems, host);
}

#include "Console/Categories.h"
#include "Console/Commands.h"
#include "Console/DeviceChooser.h"
#include "Console/InterruptibleReading.h"
#include "Console/Listing.h"
#include "Console/Problems.h"
#include "Console/Terminal.h"
#include "Device/SectionItems.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>
#include <vector>

namespace
{
constexpr int CategoryWidth = 14;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ListCommand)
};

/// Sections that a device has a place for, with what stands in them.
using Holdings = std::vector<std::pair<Section, SectionItems>>;

Holdings holdings(Device& device, std::optional<Section> only)
{
    Holdings all;
    for (const SectionFacts& one : Sections::all()) {
        if (only && *only != one.section)
            continue;
        if (std::optional<SectionItems> items = SectionItems::of(device, one.section))
            all.emplace_back(one.section, std::move(*items));
    }
    return all;
}

void printCounts(const Holdings& all)
{
    for (const auto& [section, items] : all)
        Terminal::print(QStringLiteral("%1%2\n")
                            .arg(Sections::key(section).leftJustified(CategoryWidth))
                            .arg(items.count()));
}

void printJson(const Holdings& all)
{
    QJsonArray list;
    for (const auto& [section, items] : all)
        list.append(QJsonObject{{QStringLiteral("category"), Sections::key(section)},
                                {QStringLiteral("here"), qint64(items.count())},
                                {QStringLiteral("cloud"), 0},
                                {QStringLiteral("notUnderstood"), 0}});
    Terminal::printJson(QJsonDocument(list).toJson());
}

void sayThatThereIsNothing(Device& device, std::optional<Section> category)
{
    const bool isOfLibrary = !category || *category <= Section::Playlists;
    Terminal::say(isOfLibrary && !device.trackDb()
                      ? Words::tr("The device holds no media library.")
                      : Words::tr("The device has no %1.").arg(Sections::key(*category)));
}
} // namespace

int Commands::list(const CommandLine& line)
{
    const std::shared_ptr<Device> device = DeviceChooser::choose(line.device, line.waitSeconds);
    if (!device)
        return DeviceChooser::exitCodeWithout();
    const InterruptibleReading reading;
    const Holdings all = holdings(*device, line.category);
    if (all.empty())
        sayThatThereIsNothing(*device, line.category);
    if (line.json)
        printJson(all);
    else if (!line.category)
        printCounts(all);
    else if (!all.empty())
        Listing::print(*line.category, all.front().second);

    const Categories::Wish everything;
    Problems problems(*device,
                      line.category ? Categories::readersOf(*line.category) : everything.readers());
    problems.sayNew();
    return problems.count() == 0 ? ExitCode::Done : ExitCode::SomeNotCopied;
}

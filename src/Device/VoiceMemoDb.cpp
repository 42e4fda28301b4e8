#include "Device/VoiceMemoDb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/PathsWithNul.h"
#include "Device/TemporaryCopy.h"
#include "Device/sql/Database.h"

#include <QLocale>

namespace
{
constexpr auto WithLog = TemporaryCopy::SideFiles::Take;

/// Columns of the table, by position.
enum Column { Duration = 4, RecordingTime = 5, File = 6 };

QString titleOf(const QDateTime& recorded)
{
    return QLocale::system().toString(recorded.toLocalTime(), QLocale::ShortFormat);
}
} // namespace

std::unique_ptr<VoiceMemoDb> VoiceMemoDb::create(Device& device)
{
    std::unique_ptr<VoiceMemoDb> reader(new VoiceMemoDb(device));
    if (device.info(reader->_dbPath).failedAs(Failure::Kind::Missing))
        return nullptr;
    TemporaryCopy::keepForDiagnosis(device, reader->_dbPath, WithLog);
    return reader;
}

VoiceMemoDb::VoiceMemoDb(Device& device)
    : _device(device)
    , _folder(PathName::join(device.prefix(), u"Recordings"))
    , _dbPath(PathName::join(_folder, u"Recordings.db"))
{
}

const std::vector<Track*>& VoiceMemoDb::memos()
{
    load();
    return _memos;
}

void VoiceMemoDb::load()
{
    if (_loaded)
        return;
    _loaded = true;
    parse();
}

void VoiceMemoDb::parse()
{
    const TemporaryCopy copy(_device, _dbPath, WithLog);
    const Database database(copy, LibraryProblems(LibraryProblems::Library::VoiceMemos, _problems));
    Statement rows =
        database.prepare({.columns = "ZRECORDING.*", .table = "ZRECORDING", .isMain = true});
    PathsWithNul pathsWithNul;
    while (rows.step()) {
        Track& memo = _ownedMemos.emplace_back();
        memo.type = VoiceMemoTrack;
        memo.title = titleOf(rows.date(RecordingTime));
        memo.duration = rows.real(Duration);
        // The recording lies here, whatever folders the database names.
        memo.path = pathsWithNul.choose(_device, rows.utf8(File), [this](const QString& stored) {
            return PathName::join(_folder, PathName::lastComponent(stored));
        });
        _memos.push_back(&memo);
    }
}

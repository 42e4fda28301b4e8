#include "Device/VoiceMemoDb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/TemporaryCopy.h"
#include "Device/sql/Database.h"

#include <QLocale>

namespace
{
constexpr auto NoSideFiles = TemporaryCopy::SideFiles::Leave;

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
    if (!device.fileExists(reader->_dbPath))
        return nullptr;
    TemporaryCopy::keepForDiagnosis(device, reader->_dbPath, NoSideFiles);
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
    if (!_device.fileExists(_dbPath) || _device.getFileSize(_dbPath).value_or(0) <= 0)
        return;
    const TemporaryCopy copy(_device, _dbPath, NoSideFiles);
    const Database database(copy);
    Statement rows = database.prepare("select * from ZRECORDING");
    while (rows.step()) {
        Track& memo = _ownedMemos.emplace_back();
        memo.type = VoiceMemoTrack;
        memo.title = titleOf(rows.date(RecordingTime));
        memo.duration = rows.real(Duration);
        // The recording lies here, whatever folders the database names.
        memo.path = PathName::join(_folder, PathName::lastComponent(rows.text(File)));
        _memos.push_back(&memo);
    }
}

#include "Device/Formats.h"

#include "Device/iPhone/iPhoneDevice.h"
#include "Device/iPod/iPodDevice.h"
#include "Device/itdb/ITunesDbReader.h"
#include "Device/itdb/PhotoDatabaseReader.h"
#include "Device/sql/sql5PhotoDb.h"
#include "Device/sql/sql5TrackDb.h"
#include "Device/sql/sqlTrackDb.h"

const std::vector<DeviceFamily>& Formats::families()
{
    static const std::vector<DeviceFamily> all = {{iPhoneDevice::init, iPhoneDevice::uninit},
                                                  {iPodDevice::init, iPodDevice::uninit}};
    return all;
}

const std::vector<Formats::LibraryProbe>& Formats::libraries()
{
    // The newest format first.
    static const std::vector<LibraryProbe> all = {
        sql5TrackDb::initWithDevice, sqlTrackDb::initWithDevice, ITunesDbReader::initWithDevice};
    return all;
}

const std::vector<Formats::PhotoLibraryProbe>& Formats::photoLibraries()
{
    static const std::vector<PhotoLibraryProbe> all = {PhotoDatabaseReader::initWithDevice,
                                                       sql5PhotoDb::initWithDevice};
    return all;
}

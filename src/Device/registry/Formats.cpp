#include "Device/Formats.h"

#include "Device/iPhone/PhoneDevice.h"
#include "Device/iPod/iPodDevice.h"
#include "Device/itdb/ITunesDbReader.h"
#include "Device/itdb/PhotoDatabaseReader.h"
#include "Device/sql/LibraryItdbReader.h"
#include "Device/sql/MediaLibraryReader.h"
#include "Device/sql/PhotosSqliteReader.h"

const std::vector<DeviceFamily>& Formats::families()
{
    static const std::vector<DeviceFamily> all = {{PhoneDevice::init, PhoneDevice::uninit},
                                                  {iPodDevice::init, iPodDevice::uninit}};
    return all;
}

const std::vector<Formats::LibraryProbe>& Formats::libraries()
{
    // The newest format first.
    static const std::vector<LibraryProbe> all = {MediaLibraryReader::initWithDevice,
                                                  LibraryItdbReader::initWithDevice,
                                                  ITunesDbReader::initWithDevice};
    return all;
}

const std::vector<Formats::PhotoLibraryProbe>& Formats::photoLibraries()
{
    static const std::vector<PhotoLibraryProbe> all = {PhotoDatabaseReader::initWithDevice,
                                                       PhotosSqliteReader::initWithDevice};
    return all;
}

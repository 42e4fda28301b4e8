// Copying media out of a phone, against a bare loop over the library that speaks to it. The phone
// is simulated, on a socket of this computer, without encryption: what is left is our own cost.

#include "Device/DeviceDelegate.h"
#include "Device/iPhone/PhoneDevice.h"
#include "Device/iPhone/PhoneSession.h"
#include "Device/iPhone/PluggedPhone.h"
#include "support/Files.h"
#include "support/phone/SimulatedUsb.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <libimobiledevice/afc.h>
#include <unistd.h>

namespace
{
constexpr int FileCount = 205; // 1 GiB
constexpr qsizetype FileSize = 5 * 1024 * 1024;
constexpr int PictureCount = 10'000;
constexpr std::uint32_t ChunkSize = 1024 * 1024;
const QString Identifier = QStringLiteral("bench-phone");

/// A phone full of media and pictures, plugged in.
class Phone
{
public:
    Phone()
        : _usb(_folder.filePath("usb"))
    {
        const QByteArray content = Files::content(FileSize);
        for (int i = 0; i < FileCount; ++i)
            Files::write(_folder.filePath("phone" + source(i)), content);
        for (int i = 0; i < PictureCount; ++i)
            Files::write(_folder.filePath(QString("phone/DCIM/100/IMG_%1.JPG").arg(i)), "");
        SimulatedPhone::Identity identity;
        identity.identifier = Identifier;
        identity.root = _folder.filePath("phone");
        identity.tls = false;
        phone = std::make_shared<SimulatedPhone>(identity);
        qputenv("USBMUXD_SOCKET_ADDRESS", _usb.address());
        _usb.attach(phone);
    }

    static QString source(int i) { return QString("/media/%1.mp3").arg(i); }
    QString destination(int i) const { return _folder.filePath(QString("out/%1.mp3").arg(i)); }
    void clear() const
    {
        QDir(_folder.filePath("out")).removeRecursively();
        QDir().mkpath(_folder.filePath("out"));
    }

    std::shared_ptr<SimulatedPhone> phone;

private:
    QTemporaryDir _folder;
    SimulatedUsb _usb;
};

Phone& thePhone()
{
    static Phone phone;
    return phone;
}

void copyBare(afc_client_t client, int i, std::vector<char>& buffer)
{
    std::uint64_t handle = 0;
    afc_file_open(client, Phone::source(i).toUtf8().constData(), AFC_FOPEN_RDONLY, &handle);
    const int file = open(thePhone().destination(i).toUtf8().constData(),
                          O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    std::uint32_t count = 0;
    while (afc_file_read(client, handle, buffer.data(), ChunkSize, &count) == 0 && count > 0) {
        if (write(file, buffer.data(), count) != ssize_t(count))
            break;
    }
    close(file);
    afc_file_close(client, handle);
}

void Bare(benchmark::State& state)
{
    (void)thePhone();
    idevice_t device = nullptr;
    afc_client_t client = nullptr;
    idevice_new(&device, Identifier.toUtf8().constData());
    afc_client_start_service(device, &client, "bench");
    std::vector<char> buffer(ChunkSize);
    for (auto _ : state) {
        state.PauseTiming();
        thePhone().clear();
        state.ResumeTiming();
        for (int i = 0; i < FileCount; ++i)
            copyBare(client, i, buffer);
    }
    afc_client_free(client);
    idevice_free(device);
    state.SetBytesProcessed(state.iterations() * FileCount * FileSize);
}

std::shared_ptr<PhoneDevice> openPhone()
{
    (void)thePhone();
    return std::make_shared<PhoneDevice>(PhoneSession::open(
        std::make_shared<PluggedPhone>(MobileDevice::Attachment{1, 0, Identifier})));
}

void CopyOut(benchmark::State& state)
{
    const auto device = openPhone();
    DeviceDelegate listener;
    Device::setDelegate(&listener);
    for (auto _ : state) {
        state.PauseTiming();
        thePhone().clear();
        state.ResumeTiming();
        for (int i = 0; i < FileCount; ++i)
            device->copyOut(Phone::source(i), thePhone().destination(i), i);
    }
    Device::setDelegate(nullptr);
    state.SetBytesProcessed(state.iterations() * FileCount * FileSize);
}

void ListPictures(benchmark::State& state)
{
    const auto device = openPhone();
    thePhone().phone->forget();
    for (auto _ : state)
        benchmark::DoNotOptimize(device->getFiles("/DCIM/100"));
    state.counters["requests per entry"] =
        double(thePhone().phone->operations()) / double(state.iterations()) / PictureCount;
}

BENCHMARK(Bare)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(CopyOut)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(Bare)->Name("BareAgain")->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(ListPictures)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
} // namespace

BENCHMARK_MAIN();

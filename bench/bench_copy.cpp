// Copying media out of a volume, against cp.

#include "Device/DeviceDelegate.h"
#include "Device/iPod/iPodDevice.h"
#include "support/Files.h"

#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{
constexpr int FileCount = 400;
constexpr qsizetype FileSize = 5 * 1024 * 1024;

/// The files of a player, and a place to copy them to; both stay warm in the cache.
class Media
{
public:
    Media()
    {
        const QByteArray content = Files::content(FileSize);
        for (int i = 0; i < FileCount; ++i)
            Files::write(source(i), content);
        QDir().mkpath(_folder.filePath("iPod_Control"));
    }

    QString root() const { return _folder.path(); }
    QString source(int i) const { return _folder.filePath(QString("media/%1.mp3").arg(i)); }
    QString sources() const { return _folder.filePath("media"); }
    QString destination() const { return _folder.filePath("out"); }

    void clear() const
    {
        QDir(destination()).removeRecursively();
        QDir().mkpath(destination());
    }

private:
    QTemporaryDir _folder;
};

const Media& media()
{
    static const Media files;
    return files;
}

void Cp(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        media().clear();
        state.ResumeTiming();
        QProcess::execute("cp", {"-r", media().sources(), media().destination()});
    }
    state.SetBytesProcessed(state.iterations() * FileCount * FileSize);
}

void CopyOut(benchmark::State& state)
{
    iPodDevice device(media().root());
    DeviceDelegate listener;
    Device::setDelegate(&listener);
    for (auto _ : state) {
        state.PauseTiming();
        media().clear();
        state.ResumeTiming();
        for (int i = 0; i < FileCount; ++i)
            device.copyOut(media().source(i), media().destination() + QString("/%1.mp3").arg(i), i);
    }
    Device::setDelegate(nullptr);
    state.SetBytesProcessed(state.iterations() * FileCount * FileSize);
}

BENCHMARK(Cp)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(CopyOut)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(Cp)->Name("CpAgain")->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
} // namespace

BENCHMARK_MAIN();

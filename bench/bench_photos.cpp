// Photos: the decoders against a memory copy or a plain loop over doubles, the preview pass
// against bare reads, camera pictures against their full decode, loading against its floor.

#include "Device/CameraRollDb.h"
#include "Device/Ithmb.h"
#include "Device/PhotoDb.h"
#include "Device/PreviewImage.h"
#include "Device/iPod/iPodDevice.h"
#include "floor_photodb.h"
#include "support/Files.h"
#include "support/FolderDevice.h"
#include "support/PhotoDatabaseWriter.h"
#include "support/SamplePicture.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>

namespace
{
constexpr std::uint32_t Width = 720;
constexpr std::uint32_t Height = 480;
constexpr int PreviewCount = 1000;
constexpr int PhotoCount = 50'000;
constexpr quint32 PreviewBytes = 176 * 132 * 2;

ByteView viewOf(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}

/// Bytes like those of a picture: neighbours are alike.
const QByteArray& stored()
{
    static const QByteArray bytes = [] {
        QByteArray result(Width * Height * 4, '\0');
        for (qsizetype i = 0; i < result.size(); ++i)
            result[i] = char(i / 97 + (i * 31 & 7));
        return result;
    }();
    return bytes;
}

/// An image like the decoder's, filled by copying bytes that are there already.
void MemoryCopy(benchmark::State& state)
{
    const QByteArray& source = stored();
    for (auto _ : state) {
        QImage image(Width, Height, QImage::Format_RGBA8888);
        std::memcpy(image.bits(), source.constData(), Width * Height * 4);
        benchmark::DoNotOptimize(image.constBits());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * Width * Height * 4);
}

template <QImage (*decode)(ByteView, std::uint32_t, std::uint32_t)>
void Decode(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(decode(viewOf(stored()), Width, Height).constBits());
    state.SetBytesProcessed(state.iterations() * Width * Height * 4);
}

std::uint8_t truncated(double value)
{
    const int whole = int(value);
    return std::uint8_t(whole < 0 ? 0 : whole > 255 ? 255 : whole);
}

std::uint8_t limited(double value)
{
    if (value >= 255.0)
        return 255;
    return value <= 0.0 ? 0 : std::uint8_t(value);
}

void plainPackedPixel(int y, int u, int v, uchar* out)
{
    out[0] = uchar(truncated(y + 1.370705 * (v - 128)) * 220 / 256);
    out[1] = uchar(truncated(y - 0.698001 * (v - 128) - 0.337633 * (u - 128)) * 220 / 256);
    out[2] = uchar(truncated(y + 1.732446 * (u - 128)) * 220 / 256);
}

void PackedInDoubles(benchmark::State& state)
{
    for (auto _ : state) {
        const QByteArray woven = Ithmb::interlace(viewOf(stored()), Width, Height);
        const auto* in = reinterpret_cast<const uchar*>(woven.constData());
        QImage image(Width, Height, QImage::Format_RGB888);
        uchar* out = image.bits();
        for (std::size_t i = 0; i < Width * Height / 2; ++i, in += 4, out += 6) {
            plainPackedPixel(in[1], in[0], in[2], out);
            plainPackedPixel(in[3], in[0], in[2], out + 3);
        }
        benchmark::DoNotOptimize(image.constBits());
    }
}

void PlanarInDoubles(benchmark::State& state)
{
    const auto* in = reinterpret_cast<const uchar*>(stored().constData());
    constexpr std::size_t Count = Width * Height;
    for (auto _ : state) {
        QImage image(Width, Height, QImage::Format_RGB888);
        uchar* out = image.bits();
        for (std::size_t i = 0; i < Count; ++i, out += 3) {
            const std::size_t chroma = i / 720 / 2 * 360 + i % 720 / 2;
            const int u = in[Count + chroma];
            const int v = in[Count + Count / 4 + chroma];
            const double c = 1.164 * (in[i] - 16);
            out[0] = limited(c + 1.596 * (v - 128));
            out[1] = limited(c - 0.813 * (v - 128) - 0.391 * (u - 128));
            out[2] = limited(c + 2.018 * (u - 128));
        }
        benchmark::DoNotOptimize(image.constBits());
    }
}

TestPhotoLibrary libraryOf(int count)
{
    TestPhotoLibrary library;
    library.kinds = {1019, 1024, 1023};
    for (int i = 0; i < count; ++i) {
        TestPhoto photo;
        photo.id = quint32(i + 100);
        photo.thumbnails = {{1019, ":Thumbs:F1019_1.ithmb", 0, 691200, 0, 0, 480, 720},
                            {1024, ":Thumbs:F1024_1.ithmb", 0, 153600, 0, 0, 240, 320},
                            {1023, ":Thumbs:F1023_1.ithmb",
                             quint32(i % PreviewCount) * PreviewBytes, PreviewBytes, 0, 0, 132,
                             176}};
        if (i % 3 == 0)
            photo.fullSizeFile =
                QString(":Full Resolution:2009:%1:IMG_%2.jpg").arg(i % 12 + 1).arg(i);
        library.photos.push_back(photo);
    }
    for (int i = 0; i < count / 100; ++i) {
        TestAlbum album{QString("Album %1").arg(i), {}};
        for (int k = 0; k < 100; ++k)
            album.photoIds.push_back(library.photos[std::size_t(i * 100 + k)].id);
        library.albums.push_back(album);
    }
    return library;
}

/// A player with so many photos and the previews of a thousand.
QString player(int count)
{
    static const QTemporaryDir folders[2];
    const QTemporaryDir& folder = folders[count == PhotoCount ? 1 : 0];
    if (!QFile::exists(folder.filePath("Photos"))) {
        Files::write(folder.filePath("iPod_Control/Device/SysInfo"), "");
        Files::write(folder.filePath("Photos/Thumbs/F1023_1.ithmb"),
                     Files::content(PreviewCount * qsizetype(PreviewBytes)));
        Files::write(folder.filePath("Photos/Photo Database"),
                     PhotoDatabaseWriter::write(libraryOf(count)));
    }
    return folder.path();
}

void ReadsAndConversion(benchmark::State& state)
{
    iPodDevice device(player(PreviewCount));
    const QString file = player(PreviewCount) + "/Photos/Thumbs/F1023_1.ithmb";
    for (auto _ : state) {
        std::vector<QImage> images;
        for (quint32 i = 0; i < PreviewCount; ++i)
            images.push_back(Ithmb::getRgb565Bmp(
                viewOf(device.read(file, i * PreviewBytes, PreviewBytes)), 176, 132));
        benchmark::DoNotOptimize(images.data());
    }
}

void PreviewPassOfPhotos(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto device = std::make_unique<iPodDevice>(player(PreviewCount));
        PhotoDb* library = device->photoDb();
        state.ResumeTiming();
        library->previews().wait(); // reads the database of the thousand photos as well
        state.PauseTiming();
        device.reset();
        state.ResumeTiming();
    }
}

const QByteArray& cameraJpeg()
{
    static const QByteArray jpeg = SamplePicture::cameraJpeg(1);
    return jpeg;
}

void FullDecodeAndScale(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(
            QImage::fromData(cameraJpeg(), "jpeg")
                .scaled(100, 75, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                .constBits());
}

void CameraPreview(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(
            PreviewImage::decodeThumbnail(cameraJpeg(), PreviewImage::PreviewBox).constBits());
}

void LoadFloor(benchmark::State& state)
{
    const QString file = player(PhotoCount) + "/Photos/Photo Database";
    for (auto _ : state)
        benchmark::DoNotOptimize(floorOfPhotoDatabase(file));
}

void Load(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto device = std::make_unique<iPodDevice>(player(PhotoCount));
        PhotoDb* library = device->photoDb();
        state.ResumeTiming();
        benchmark::DoNotOptimize(library->photos().size());
        state.PauseTiming();
        device.reset();
        state.ResumeTiming();
    }
}

constexpr auto Unit = benchmark::kMicrosecond;
BENCHMARK(MemoryCopy)->Unit(Unit);
BENCHMARK(Decode<Ithmb::getRgb565Bmp>)->Name("Rgb565")->Unit(Unit);
BENCHMARK(Decode<Ithmb::getRgb555Bmp>)->Name("Rgb555")->Unit(Unit);
BENCHMARK(Decode<Ithmb::getBgr32Bmp>)->Name("Bgr32")->Unit(Unit);
BENCHMARK(PackedInDoubles)->Unit(Unit);
BENCHMARK(Decode<Ithmb::getYuvBmp>)->Name("Packed")->Unit(Unit);
BENCHMARK(PlanarInDoubles)->Unit(Unit);
BENCHMARK(Decode<Ithmb::getYuv420Bmp>)->Name("Planar")->Unit(Unit);
BENCHMARK(ReadsAndConversion)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(PreviewPassOfPhotos)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FullDecodeAndScale)->Unit(benchmark::kMillisecond);
BENCHMARK(CameraPreview)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadFloor)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Load)->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv); // finds the image formats
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

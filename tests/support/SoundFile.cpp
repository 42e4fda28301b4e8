#include "support/SoundFile.h"

#include <QtEndian>

#include <cmath>
#include <numbers>
#include <vector>

namespace
{
constexpr int SampleRate = 16000;
constexpr int FrameCount = 4; // pictures, and pictures a second
constexpr int FrameWidth = 48;
constexpr int FrameHeight = 32;

template <typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(sizeof(Number), Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <typename Number>
QByteArray big(Number number)
{
    QByteArray bytes(sizeof(Number), Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray zeros(qsizetype count)
{
    return QByteArray(count, '\0');
}

/// Signed 16-bit little-endian samples of a chord that fades away.
QByteArray chord(int number, double seconds)
{
    const double root = 220.0 * std::pow(2.0, (number % 24) / 12.0);
    const std::vector<double> notes = {root, root * 5 / 4, root * 3 / 2};
    QByteArray samples;
    const int count = int(seconds * SampleRate);
    samples.reserve(qsizetype(count) * 2);
    for (int i = 0; i < count; ++i) {
        const double time = double(i) / SampleRate;
        double value = 0;
        for (const double note : notes)
            value += std::sin(2 * std::numbers::pi * note * time);
        const double fade = std::exp(-4 * time) * 0.25;
        samples += little(qint16(value * fade * 32767));
    }
    return samples;
}

QByteArray atom(const char* type, const QByteArray& content)
{
    return big(quint32(content.size() + 8)) + QByteArray(type, 4) + content;
}

QByteArray fullAtom(const char* type, const QByteArray& content, quint32 flags = 0)
{
    return atom(type, big(flags) + content);
}

QByteArray identityMatrix()
{
    return big(quint32(0x10000)) + zeros(12) + big(quint32(0x10000)) + zeros(12) +
           big(quint32(0x40000000));
}

QByteArray movieHeader()
{
    return fullAtom("mvhd", zeros(8) + big(quint32(SampleRate)) + big(quint32(SampleRate)) +
                                big(quint32(0x10000)) + big(quint16(0x100)) + zeros(10) +
                                identityMatrix() + zeros(24) + big(quint32(3)));
}

QByteArray trackHeader(quint32 id, bool picture)
{
    return fullAtom("tkhd",
                    zeros(8) + big(id) + zeros(4) + big(quint32(SampleRate)) + zeros(8) + zeros(4) +
                        big(quint16(picture ? 0 : 0x100)) + zeros(2) + identityMatrix() +
                        big(quint32(picture ? FrameWidth << 16 : 0)) +
                        big(quint32(picture ? FrameHeight << 16 : 0)),
                    7);
}

QByteArray handler(const char* kind, const char* type)
{
    return fullAtom("hdlr", QByteArray(kind, 4) + QByteArray(type, 4) + zeros(12) + zeros(1));
}

/// What one track of the movie is made of.
struct Stream {
    bool picture;
    QByteArray description; ///< of the samples
    quint32 sampleCount;
    quint32 sampleSize;
    quint32 ticksPerSample;
    quint32 offset; ///< of the first sample in the file
};

QByteArray trackAtom(quint32 id, const Stream& stream)
{
    const QByteArray table =
        atom("stbl", fullAtom("stsd", big(quint32(1)) + stream.description) +
                         fullAtom("stts", big(quint32(1)) + big(stream.sampleCount) +
                                              big(stream.ticksPerSample)) +
                         fullAtom("stsc", big(quint32(1)) + big(quint32(1)) +
                                              big(stream.sampleCount) + big(quint32(1))) +
                         fullAtom("stsz", big(stream.sampleSize) + big(stream.sampleCount)) +
                         fullAtom("stco", big(quint32(1)) + big(stream.offset)));
    const QByteArray mediaHeader =
        stream.picture ? fullAtom("vmhd", zeros(8), 1) : fullAtom("smhd", zeros(4));
    const QByteArray dataInfo =
        atom("dinf", fullAtom("dref", big(quint32(1)) + fullAtom("alis", {}, 1)));
    const QByteArray media = fullAtom("mdhd", zeros(8) + big(quint32(SampleRate)) +
                                                  big(quint32(SampleRate)) + zeros(4)) +
                             handler("mhlr", stream.picture ? "vide" : "soun") +
                             atom("minf", mediaHeader + handler("dhlr", "alis") + dataInfo + table);
    return atom("trak", trackHeader(id, stream.picture) + atom("mdia", media));
}

QByteArray pictureDescription()
{
    return atom("raw ", zeros(6) + big(quint16(1)) + zeros(16) + big(quint16(FrameWidth)) +
                            big(quint16(FrameHeight)) + big(quint32(72 << 16)) +
                            big(quint32(72 << 16)) + zeros(4) + big(quint16(1)) + zeros(32) +
                            big(quint16(24)) + big(qint16(-1)));
}

QByteArray soundDescription()
{
    return atom("sowt", zeros(6) + big(quint16(1)) + zeros(8) + big(quint16(1)) + big(quint16(16)) +
                            zeros(4) + big(quint32(SampleRate) << 16));
}

QByteArray pictures(int number)
{
    QByteArray pixels;
    for (int frame = 0; frame < FrameCount; ++frame) {
        for (int i = 0; i < FrameWidth * FrameHeight; ++i) {
            pixels += char(number * 37);
            pixels += char(64 * frame);
            pixels += char(i / FrameWidth * 8);
        }
    }
    return pixels;
}
} // namespace

QByteArray SoundFile::wav(int number)
{
    const QByteArray samples = chord(number, 0.5);
    const QByteArray format = QByteArrayLiteral("fmt ") + little(quint32(16)) + little(quint16(1)) +
                              little(quint16(1)) + little(quint32(SampleRate)) +
                              little(quint32(SampleRate * 2)) + little(quint16(2)) +
                              little(quint16(16));
    const QByteArray data = QByteArrayLiteral("data") + little(quint32(samples.size())) + samples;
    const QByteArray body = QByteArrayLiteral("WAVE") + format + data;
    return QByteArrayLiteral("RIFF") + little(quint32(body.size())) + body;
}

QByteArray SoundFile::movie(int number)
{
    const QByteArray fileType =
        atom("ftyp", QByteArrayLiteral("qt  ") + big(quint32(0x200)) + QByteArrayLiteral("qt  "));
    const QByteArray frames = pictures(number);
    const QByteArray sound = chord(number, 1.0);
    const auto firstFrame = quint32(fileType.size() + 8);
    const Stream pictureStream = {true,
                                  pictureDescription(),
                                  FrameCount,
                                  FrameWidth * FrameHeight * 3,
                                  SampleRate / FrameCount,
                                  firstFrame};
    const Stream soundStream = {
        false, soundDescription(), SampleRate, 2, 1, firstFrame + quint32(frames.size())};
    return fileType + atom("mdat", frames + sound) +
           atom("moov", movieHeader() + trackAtom(1, pictureStream) + trackAtom(2, soundStream));
}

QByteArray SoundFile::pdf(const QByteArray& text)
{
    const QByteArray content = "BT /F1 24 Tf 40 400 Td (" + text + ") Tj ET";
    const std::vector<QByteArray> objects = {
        "<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 400 500] /Contents 4 0 R "
        "/Resources << /Font << /F1 5 0 R >> >> >>",
        "<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content +
            "\nendstream",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    QByteArray file = "%PDF-1.4\n";
    QByteArray table = "0000000000 65535 f \n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(int(i) + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const qsizetype tableStart = file.size();
    return file + "xref\n0 6\n" + table + "trailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n" +
           QByteArray::number(tableStart) + "\n%%EOF\n";
}

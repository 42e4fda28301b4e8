#pragma once

#include <QByteArray>

/// Short media files that play: the smallest formats that need no encoder.
namespace SoundFile
{
/// A WAV file: 16 bits, mono, half a second of a chord that depends on `number`.
QByteArray wav(int number);
/// A QuickTime movie: a second of uncompressed pictures in a colour that depends on `number`,
/// with the same chord as sound.
QByteArray movie(int number);
/// A one-page PDF document that shows `text` (Latin letters).
QByteArray pdf(const QByteArray& text);
} // namespace SoundFile

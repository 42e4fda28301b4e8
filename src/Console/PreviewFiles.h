#pragma once

#include <QString>

class Device;

/// The pictures that "dump --previews" writes.
namespace PreviewFiles
{
/// Waits for the previews and writes them below `folder`, numbered as in the document:
/// "photos/N.png" and "cameraRoll/N.png" for each photo with a preview of its own, and
/// "thumbnails/N-K.png" for each stored rendition that can be decoded. Empty, or why a file could
/// not be written.
QString write(Device& device, const QString& folder);
} // namespace PreviewFiles

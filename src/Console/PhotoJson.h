#pragma once

#include "Console/LibraryJson.h"

/// The photo side of a library's JSON document: each writes one object, or null.
namespace PhotoJson
{
void writePhotoDb(Device& device, const LibraryJson::Sink& sink);
void writeCameraRollDb(Device& device, const LibraryJson::Sink& sink);
} // namespace PhotoJson

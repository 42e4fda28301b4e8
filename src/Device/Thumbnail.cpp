#include "Device/Thumbnail.h"

#include <algorithm>
#include <array>

namespace
{
struct UsualGrid {
    std::uint32_t correlationId;
    std::uint32_t width;
    std::uint32_t height;
};

constexpr std::array UsualGrids = {
    UsualGrid{1019, 720, 480}, UsualGrid{1023, 176, 132}, UsualGrid{1024, 320, 240},
    UsualGrid{1064, 320, 240}, UsualGrid{1067, 720, 480}, UsualGrid{3008, 640, 480},
    UsualGrid{3009, 160, 128}, UsualGrid{3141, 150, 150}, UsualGrid{4040, 166, 166}};
} // namespace

void Thumbnail::adjustSize()
{
    if (imageWidth == 0 || imageHeight == 0)
        return;
    const std::uint32_t paddedWidth = std::uint32_t(horizontalPadding) + imageWidth;
    const std::uint32_t paddedHeight = std::uint32_t(verticalPadding) + imageHeight;
    // Wraps around for sizes that no device has; such a product may even be 0.
    const std::uint32_t area = paddedWidth * paddedHeight;
    if (area != 0 && imageSize % area == 0) {
        width = paddedWidth;
        height = paddedHeight;
        return;
    }
    const auto usual = std::find_if(UsualGrids.begin(), UsualGrids.end(), [this](const auto& grid) {
        return grid.correlationId == correlationId;
    });
    if (usual != UsualGrids.end()) {
        width = usual->width;
        height = usual->height;
    }
}

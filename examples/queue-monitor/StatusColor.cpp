#include "StatusColor.h"

#include <numerics/ColorUtil.h>

namespace {

constexpr float lightShare = 0.3F; // taken off the value on a light base
constexpr double darkShare = 0.55; // of the status in a mix with white on a dark base
constexpr double backgroundShare = 0.15; // of the status in a mix with the base

QColor hue(CommandData::Status status)
{
    switch (status) {
    case CommandData::PROCESSING:
        return {0x1f, 0x78, 0xe0};
    case CommandData::FINISHED:
        return {0x1e, 0x9e, 0x48};
    case CommandData::ERR:
        return {0xe0, 0x2a, 0x2a};
    case CommandData::REQUIRE_USER_ACTION:
        return {0xe0, 0x7a, 0x00};
    case CommandData::PAUSED:
        return {0x8e, 0x4f, 0xd0};
    case CommandData::QUEUEING:
    case CommandData::CANCELLED:
    case CommandData::OTHER:
        break;
    }
    return {0x88, 0x8c, 0x94};
}

bool isDark(const QPalette &palette)
{
    return palette.base().color().lightness() < palette.text().color().lightness();
}

} // namespace

QColor statusColor(CommandData::Status status, const QPalette &palette)
{
    return isDark(palette) ? ColorUtil::interpolate(hue(status), Qt::white, darkShare)
                           : ColorUtil::makeDarkerColor(hue(status), lightShare);
}

QColor statusBackground(CommandData::Status status, const QPalette &palette)
{
    return ColorUtil::interpolate(hue(status), palette.base().color(), backgroundShare);
}

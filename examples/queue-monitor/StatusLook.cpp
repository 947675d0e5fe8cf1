#include "StatusLook.h"

#include <numerics/ColorUtil.h>

namespace {

constexpr float lightShare = 0.3F; // taken off the value on a light base
constexpr double darkShare = 0.55; // of the hue in a mix with white on a dark base
constexpr double backgroundShare = 0.15; // of the hue in a mix with the base

StatusLook plainLookOf(CommandData::Status status)
{
    switch (status) {
    case CommandData::PROCESSING:
        return {StatusLook::tr("Running"), u'\u25ba', QColor(0x1f, 0x78, 0xe0), {}};
    case CommandData::FINISHED:
        return {StatusLook::tr("Finished"), u'\u2713', QColor(0x1e, 0x9e, 0x48), {}};
    case CommandData::CANCELLED:
        return {StatusLook::tr("Cancelled"), u'\u00d7', QColor(0x88, 0x8c, 0x94), {}};
    case CommandData::ERR:
        return {StatusLook::tr("Failed"), u'!', QColor(0xe0, 0x2a, 0x2a), {}};
    case CommandData::REQUIRE_USER_ACTION:
        return {StatusLook::tr("Needs your answer"), u'?', QColor(0xe0, 0x7a, 0x00), {}};
    case CommandData::QUEUEING:
    case CommandData::PAUSED:
    case CommandData::OTHER:
        break;
    }
    return {StatusLook::tr("Waiting"), u'\u2026', QColor(0x8e, 0x4f, 0xd0), {}};
}

} // namespace

StatusLook lookOf(CommandData::Status status, const QPalette &palette)
{
    StatusLook look = plainLookOf(status);
    const QColor base = palette.base().color();
    const bool isDark = base.lightness() < palette.text().color().lightness();
    look.background = ColorUtil::interpolate(look.color, base, backgroundShare);
    look.color = isDark ? ColorUtil::interpolate(look.color, Qt::white, darkShare)
                        : ColorUtil::makeDarkerColor(look.color, lightShare);
    return look;
}

#include "ColorUtil.h"

#include <algorithm>
#include <cmath>

namespace {
float mix(float first, float second, double weight)
{
    return static_cast<float>(double(first) * weight + double(second) * (1.0 - weight));
}

int getByte(unsigned int color, int shift)
{
    return int((color >> shift) & 0xFF);
}
} // namespace

QColor ColorUtil::interpolate(const QColor &first, const QColor &second, double weight)
{
    return QColor::fromRgbF(mix(first.redF(), second.redF(), weight),
        mix(first.greenF(), second.greenF(), weight),
        mix(first.blueF(), second.blueF(), weight),
        mix(first.alphaF(), second.alphaF(), weight));
}

unsigned int ColorUtil::interpolate(unsigned int first, unsigned int second, double weight)
{
    const QColor from = toQColor(first);
    const QColor to = toQColor(second);
    // The alpha is left out rather than mixed: outside 0 to 1 it would make the whole colour invalid.
    const QColor mixed = QColor::fromRgbF(mix(from.redF(), to.redF(), weight),
        mix(from.greenF(), to.greenF(), weight),
        mix(from.blueF(), to.blueF(), weight));
    return toAABBGGRR(mixed, false);
}

QColor ColorUtil::makeDarkerColor(const QColor &color, int amount)
{
    int hue = 0;
    int saturation = 0;
    int value = 0;
    int alpha = 0;
    color.getHsv(&hue, &saturation, &value, &alpha);
    // Colours of 16 bits a channel round up to 360, which QColor::fromHsv() refuses.
    if (hue == 360) {
        hue = 0;
    }
    return QColor::fromHsv(hue, saturation, std::max(value - std::clamp(amount, 0, 255), 0), alpha);
}

QColor ColorUtil::makeDarkerColor(const QColor &color, float fraction)
{
    const float positive = fraction > 0.0f ? fraction : 0.0f; // not a number gives 0, too
    const float share = positive < 1.0f ? positive : 1.0f;
    return makeDarkerColor(color, static_cast<int>(std::ceil(static_cast<float>(color.value()) * share)));
}

unsigned int ColorUtil::toAABBGGRR(const QColor &color, bool useAlpha)
{
    const unsigned int alpha = useAlpha ? unsigned(color.alpha()) : 0xFFu;
    return alpha << 24 | unsigned(color.blue()) << 16 | unsigned(color.green()) << 8 | unsigned(color.red());
}

QColor ColorUtil::toQColor(unsigned int color)
{
    return QColor(getByte(color, 0), getByte(color, 8), getByte(color, 16), getByte(color, 24));
}

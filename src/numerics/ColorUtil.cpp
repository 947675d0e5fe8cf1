#include "ColorUtil.h"

#include <algorithm>
#include <cmath>

namespace {

float mix(float first, float second, double weight)
{
    return static_cast<float>(static_cast<double>(first) * weight + static_cast<double>(second) * (1.0 - weight));
}

int getByte(unsigned int color, int shift)
{
    return static_cast<int>(color >> shift & 0xFF);
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
    // The alpha is not mixed: outside 0 to 1 it would make the colour invalid.
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
    // A hue of 16 bits may round up to 360, which QColor::fromHsv() rejects.
    if (hue == 360) {
        hue = 0;
    }
    return QColor::fromHsv(hue, saturation, std::max(value - std::clamp(amount, 0, 255), 0), alpha);
}

QColor ColorUtil::makeDarkerColor(const QColor &color, float fraction)
{
    const float positive = fraction > 0.0f ? fraction : 0.0f; // NaN gives 0, too
    const float share = positive < 1.0f ? positive : 1.0f;
    return makeDarkerColor(color, static_cast<int>(std::ceil(static_cast<float>(color.value()) * share)));
}

unsigned int ColorUtil::toAABBGGRR(const QColor &color, bool useAlpha)
{
    const auto toUnsigned = [](int channel) { return static_cast<unsigned int>(channel); };
    const unsigned int alpha = useAlpha ? toUnsigned(color.alpha()) : 0xFF;
    return alpha << 24 | toUnsigned(color.blue()) << 16 | toUnsigned(color.green()) << 8 | toUnsigned(color.red());
}

QColor ColorUtil::toQColor(unsigned int color)
{
    return QColor(getByte(color, 0), getByte(color, 8), getByte(color, 16), getByte(color, 24));
}

#ifndef TARNWICK_NUMERICS_COLORUTIL_H
#define TARNWICK_NUMERICS_COLORUTIL_H

#include <tarnwick_export.h>

#include <QColor>

/**
 * @brief Mixes and darkens colours, and packs them into 32 bits.
 *
 * A packed colour is an `unsigned int` AABBGGRR: red in bits 0 to 7, then green, blue, and alpha in bits 24 to 31, each
 * the 0 to 255 of QColor's integer accessors. This is not the order of QRgb, which has blue in the lowest byte.
 *
 * Threads: every operation uses its arguments only and may be called on any thread.
 */
class TARNWICK_EXPORT ColorUtil
{
public:
    /** An object holds nothing; copying, moving and assigning one does nothing. */
    ColorUtil() = default;
    /** @copydoc ColorUtil() */
    ColorUtil(const ColorUtil &) = default;
    /** @copydoc ColorUtil() */
    ColorUtil(ColorUtil &&) noexcept = default;
    /** @copydoc ColorUtil() */
    ColorUtil &operator=(const ColorUtil &) = default;
    /** @copydoc ColorUtil() */
    ColorUtil &operator=(ColorUtil &&) noexcept = default;

    /**
     * Mixes two colours, where @p weight is the share of @p first: 1.0 gives @p first, 0.5 the middle, 0.0 @p second.
     * Most mixing functions run the other way round.
     *
     * Red, green, blue and alpha are each first * weight + second * (1 - weight), linear and not premultiplied. The
     * result is in the RGB colour model.
     *
     * @p weight is not clamped, and what QColor::fromRgbF() makes of the channels is the result: with red, green or
     * blue outside 0 to 1 a colour in extended RGB, with such an alpha a warning of Qt and an invalid colour. A @p
     * weight that is not a number gives no useful colour.
     */
    static QColor interpolate(const QColor &first, const QColor &second, double weight);

    /**
     * Mixes two packed colours, where @p weight is the share of @p first: 1.0 gives @p first, 0.5 the middle, 0.0
     * @p second. The result is always opaque (alpha 0xFF), and the alpha of neither colour plays a part.
     *
     * @p weight is not clamped; a channel that leaves its range ends at 0 or 255.
     */
    static unsigned int interpolate(unsigned int first, unsigned int second, double weight);

    /**
     * Returns @p color with its HSV value lowered by @p amount, at the lowest to 0. Hue, saturation and alpha stay; an
     * achromatic colour stays achromatic (hue -1), and a hue that reads 360 counts as 0, the same angle.
     *
     * @param color in any colour model; an invalid one counts as opaque black
     * @param amount 0 to 255; a lower one counts as 0, a higher one as 255
     * @return a valid colour in the HSV colour model
     */
    static QColor makeDarkerColor(const QColor &color, int amount);

    /**
     * Returns @p color with its HSV value lowered by a share of that value: 0.0f leaves it, 0.5f halves it, 1.0f gives
     * 0. The amount taken off is rounded up to a whole number. Otherwise as the form by amount.
     *
     * Write the fraction as a `float`: with a `double` the call is ambiguous.
     *
     * @param color in any colour model; an invalid one counts as opaque black
     * @param fraction 0 to 1; a lower one and not a number count as 0, a higher one as 1
     * @return a valid colour in the HSV colour model
     */
    static QColor makeDarkerColor(const QColor &color, float fraction);

    /**
     * Packs @p color, reduced to 8 bits a channel, as AABBGGRR.
     *
     * @param color in any colour model
     * @param useAlpha whether the alpha byte is the colour's; otherwise it is 0xFF
     */
    static unsigned int toAABBGGRR(const QColor &color, bool useAlpha);

    /** Returns the colour packed in @p color, alpha included, in the RGB colour model. Every value is a colour. */
    static QColor toQColor(unsigned int color);
};

#endif

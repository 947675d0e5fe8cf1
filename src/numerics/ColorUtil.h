#ifndef TARNWICK_NUMERICS_COLORUTIL_H
#define TARNWICK_NUMERICS_COLORUTIL_H

#include <tarnwick_export.h>

#include <QColor>

/**
 * @brief Mixes and darkens colours, and packs them into 32 bits.
 *
 * A packed colour is an `unsigned int` in the form AABBGGRR: red is in bits 0 to 7, followed by green, blue and alpha,
 * each with the value of QColor's integer accessors. QRgb is different: its lowest byte is blue.
 *
 * Threads: stateless. All functions may be called on any thread.
 */
class TARNWICK_EXPORT ColorUtil
{
public:
    /**
     * Mixes two colours. @p weight is the share of @p first: 1.0 gives @p first, 0.5 the middle, 0.0 @p second. Note
     * that most mixing functions use the opposite direction.
     *
     * Each of red, green, blue and alpha is first * weight + second * (1 - weight), linear and not premultiplied. The
     * result is in the RGB colour model.
     *
     * @p weight is not clamped, and the channels are passed to QColor::fromRgbF(). If red, green or blue is outside 0
     * to 1, the result is in extended RGB. If alpha is outside 0 to 1, Qt logs a warning and the result is invalid. The
     * result for a NaN @p weight is unspecified.
     */
    static QColor interpolate(const QColor &first, const QColor &second, double weight);

    /**
     * Mixes two packed colours. @p weight is the share of @p first: 1.0 gives @p first, 0.5 the middle, 0.0 @p second.
     * Ignores the alpha of both colours: the result is always opaque (alpha 0xFF).
     *
     * @p weight is not clamped, but the channels of the result are clamped to 0 to 255.
     */
    static unsigned int interpolate(unsigned int first, unsigned int second, double weight);

    /**
     * Returns @p color with its HSV value reduced by @p amount, but not below 0.
     *
     * Hue, saturation and alpha are kept with the precision of QColor::getHsv(), which rounds to integers. An
     * achromatic colour stays achromatic (hue -1). A hue that rounds to 360 becomes 0, which is the same angle.
     *
     * @param color a colour in any colour model; an invalid colour counts as black, and keeps its alpha
     * @param amount clamped to 0 to 255
     * @return a valid colour in the HSV colour model
     */
    static QColor makeDarkerColor(const QColor &color, int amount);

    /**
     * Returns @p color with its HSV value reduced by a fraction of that value: 0.0f keeps it, 0.5f halves it, 1.0f
     * gives 0. The amount is rounded up to an integer and passed to the other overload.
     *
     * Pass the fraction as a `float`: with a `double` the call is ambiguous.
     *
     * @param color a colour in any colour model; an invalid colour counts as black, and keeps its alpha
     * @param fraction clamped to 0 to 1; NaN counts as 0
     * @return a valid colour in the HSV colour model
     */
    static QColor makeDarkerColor(const QColor &color, float fraction);

    /**
     * Returns @p color in the form AABBGGRR, with 8 bits per channel.
     *
     * @param color a colour in any colour model
     * @param useAlpha whether to use the alpha of @p color; otherwise the alpha byte is 0xFF
     */
    static unsigned int toAABBGGRR(const QColor &color, bool useAlpha);

    /** Returns the packed colour @p color, including its alpha, in the RGB colour model. Every value is valid. */
    static QColor toQColor(unsigned int color);
};

#endif

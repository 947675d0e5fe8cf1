#ifndef TARNWICK_CONVERSIONS_STRINGCONVERSIONS_H
#define TARNWICK_CONVERSIONS_STRINGCONVERSIONS_H

#include "../foundation/Optional.h"

#include <tarnwick_export.h>

#include <QChar>
#include <QKeySequence>
#include <QList>
#include <QMap>
#include <QMatrix4x4>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QSizeF>
#include <QString>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>
#include <QVersionNumber>

#include <vector>

/**
 * @brief Converts values and geometry to short texts, and back.
 *
 * @code
 * const QString text = StringConversions::rectToString(QRect(1, 2, 30, 40)); // "1,2,30,40"
 * const QRect rect = StringConversions::stringToRect(text);
 * @endcode
 *
 * Numbers: never localised. The decimal point is ".", there are no group separators, and neither the default QLocale
 * nor setlocale() has an effect. Writers use the formats and precisions of QString::number().
 *
 * Readers accept what QString::toInt() in base 10, QString::toDouble() and QString::toFloat() accept. An integer may be
 * surrounded by ASCII white space, a floating point number by any white space. "inf" and "nan" are floating point
 * numbers, and a number outside the range of double or float reads as an infinity.
 *
 * Fields: a reader splits at one separator character. Empty fields count: there is one between two consecutive
 * separators, and an empty text is one empty field. A field that is not a number, or an integer outside the range of
 * int, reads as 0, without an effect on the other fields.
 *
 * Failure: no function throws, and only stringToStringVersionMap() logs.
 *
 * Threads: stateless. All functions may be called on any thread.
 */
class TARNWICK_EXPORT StringConversions
{
public:
    /** Returns "true" or "false". */
    static QString boolToString(bool value);

    /** Returns true for "true", in any case, and "1". Any other text gives false, also " true". */
    static bool stringToBool(const QString &text);

    /** Returns @p value as decimal digits, for example "-7". */
    static QString intToString(int value);

    /**
     * Returns the number in @p text. Returns @p defaultValue if @p text is not an integer ("12abc", "0x10") or does not
     * fit into an int ("2147483648").
     */
    static int stringToInt(const QString &text, int defaultValue = 0);

    /**
     * Reads "<mantissa><separator><exponent>" and returns mantissa * 10^exponent. For example, "1.5D+3" with the
     * separator 'D' gives 1500.
     *
     * A text without the separator is read as one number: "2.5", and with the separator 'e' also "1.5E3", since the
     * separator is case-sensitive. An invalid mantissa or exponent counts as 0. A second separator and the rest of the
     * text are ignored. The product is computed in double and then narrowed. It is NaN if the mantissa is 0 and the
     * power exceeds the range of double, as in "0e999".
     *
     * @param exponentSeparator a Latin-1 character
     */
    static float stringToFloat(const QString &text, char exponentSeparator = 'e');

    /** Returns the numbers separated by blanks, for example "1 -2 3". No numbers give an empty text. */
    static QString integerArrayToString(const std::vector<int> &values);

    /**
     * Returns one number for each field, separated by blanks: "1 x  2" gives 1, 0, 0, 2. An empty text has one field
     * and gives one 0, so an empty list does not read back.
     */
    static std::vector<int> stringToIntegerArray(const QString &text);

    /**
     * Returns the first @p count numbers of @p values in the form of integerArrayToString(). If @p count is 0 or
     * negative, @p values is not accessed and the text is empty.
     */
    static QString toString(const int *values, int count);

    /** Returns the address as "0x" and 16 lower-case hexadecimal digits. Null gives 16 zeros. */
    static QString ptrToString(const void *pointer);

    /**
     * Returns the native text of the first sequence as a suffix for captions, for example " (Ctrl+S)". Ignores the
     * other sequences. An empty list gives an empty text that is not null.
     */
    static QString qkeySequencesToAppendableString(const QList<QKeySequence> &sequences);

    /** Returns "<x> <y>", for example "10 -20". */
    static QString qpointToString(const QPoint &point);

    /** Reads "<x> <y>". Ignores further fields. Fewer than two fields give (0, 0). */
    static QPoint stringToQPoint(const QString &text);

    /**
     * Returns "<x> <y>" in format "g", for example "3.14 1.23e+06" with the precision 3.
     *
     * @param precision the number of significant digits, passed to QString::number(); 17 reads back exactly
     */
    static QString qpointfToString(const QPointF &point, int precision = 17);

    /** Reads "<x> <y>". Ignores further fields. Fewer than two fields give (0, 0). */
    static QPointF stringToQPointF(const QString &text);

    /**
     * Returns the points in the form of qpointfToString(), separated by commas: "1 2,3.5 4". No points give an empty
     * text. There is no reader for this form.
     */
    static QString qpointfVectorToString(const std::vector<QPointF> &points, int precision = 17);

    /** Returns "<width> <height>", for example "640 480". */
    static QString qSizeToString(const QSize &size);

    /**
     * Reads the width from the first field and the height from the last one, separated by blanks, and ignores the
     * fields in between: "640 x 480". A single field is both width and height: "640" gives 640 by 640, and an empty
     * text 0 by 0.
     */
    static QSize stringToQSize(const QString &text);

    /** Returns "<width> <height>" in format "g" with 17 significant digits, which reads back exactly. */
    static QString qSizeFToString(const QSizeF &size);

    /** Reads floating point numbers from the same fields as stringToQSize(). */
    static QSizeF stringToQSizeF(const QString &text);

    /** Returns "<x>,<y>,<width>,<height>", for example "1,2,30,40". */
    static QString rectToString(const QRect &rect);

    /**
     * Reads "<x>,<y>,<width>,<height>". Ignores further fields. Fewer than four fields give QRect().
     *
     * The right edge x + width - 1 and the bottom edge y + height - 1 are clamped to the range of int. In that case,
     * and for a width or height of -2147483648, the results of QRect::x(), y(), width() and height() are unspecified.
     */
    static QRect stringToRect(const QString &text);

    /**
     * Returns "<x> <y>". The components are widened to double first.
     *
     * @param precision passed to QString::number(): the number of decimals if @p fixed is true, otherwise the maximum
     *        number of significant digits. 9 significant digits read back exactly, with two exceptions: the sign of
     *        -0.0, and the greatest float, which is rounded up and reads as an infinity at a precision below 17.
     * @param fixed whether the format is "f", as in "1.500 0.100", or "g", as in "1.5 0.1"
     */
    static QString vector2DToString(const QVector2D &vector, int precision = 9, bool fixed = false);

    /** Reads "<x> <y>". Any other number of fields gives the null vector. */
    static QVector2D stringToVector2D(const QString &text);

    /** Returns "<x> <y> <z>". See vector2DToString() for @p precision and @p fixed. */
    static QString vector3DToString(const QVector3D &vector, int precision = 9, bool fixed = false);

    /** Reads "<x> <y> <z>". Any other number of fields gives the null vector. */
    static QVector3D stringToVector3D(const QString &text);

    /**
     * Returns the 16 elements row by row, separated by @p separator. Each is widened to double and written in format
     * "f" with 17 decimals: "0.10000000149011612". Elements with a magnitude below 5e-18 are written as zero.
     */
    static QString matrix4x4ToString(const QMatrix4x4 &matrix, QChar separator = u' ');

    /**
     * Reads 16 fields row by row, separated by @p separator. Each is read as a double and narrowed to float. The type
     * of the matrix is QMatrix4x4::General.
     *
     * @return an empty Optional if, and only if, the number of fields is not 16
     */
    static utility::Optional<QMatrix4x4> stringToQMatrix4x4Safe(const QString &text, QChar separator = u' ');

    /** Returns the result of stringToQMatrix4x4Safe(), or the identity matrix if that is empty. */
    static QMatrix4x4 stringToQMatrix4x4(const QString &text, QChar separator = u' ');

    /** Returns m11, m12, m13, m21 to m33, separated by blanks, in format "f" with 6 decimals: "1.000000". */
    static QString transformToString(const QTransform &transform);

    /** Reads nine fields in the order of transformToString(). Any other number of fields gives the identity. */
    static QTransform stringToQTransform(const QString &text);

    /**
     * Returns "<key> <value> | <key> <value>" in the order of the map. Keys and values are not escaped. There is no
     * reader for this form. An empty map gives a null string.
     */
    static QString mapToString(const QMap<QString, QString> &map);

    /** Returns the same form for versions: "core 1.2.3 | ui 2.0". */
    static QString mapToString(const QMap<QString, QVersionNumber> &map);

    /**
     * Reads entries separated by "|". An entry is a key, at least one blank (U+0020), and a version. White space around
     * entries, keys and versions is ignored, but only blanks separate a key from its version.
     *
     * The version is read by QVersionNumber::fromString(): "1.2abc" gives 1.2, and "abc" a null version. Of several
     * entries with the same key, the last one counts.
     *
     * @return an empty Optional if an entry is empty, has no version, or has a blank in its key or version, as in
     *         "my app 1.0". Then `invalid version format ("<text>")` is logged once as a warning in Qt's default
     *         category. An empty text is refused as well, so an empty map does not read back.
     */
    static utility::Optional<QMap<QString, QVersionNumber>> stringToStringVersionMap(const QString &text);
};

#endif

#ifndef TARNWICK_CONVERSIONS_STRINGCONVERSIONS_H
#define TARNWICK_CONVERSIONS_STRINGCONVERSIONS_H

#include <tarnwick_export.h>

#include "../foundation/Optional.h"

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
 * @brief Short texts of values and geometry, to store and to show, and the way back.
 *
 * @code
 * const QString text = StringConversions::rectToString(QRect(1, 2, 30, 40)); // "1,2,30,40"
 * const QRect rect = StringConversions::stringToRect(text);
 * @endcode
 *
 * Numbers: never localised. The decimal point is ".", nothing groups digits, and neither the default QLocale nor
 * setlocale() plays a part. Writers take the formats and precisions of QString::number(); readers take what
 * QString::toInt() in base 10, toDouble() and toFloat() take, so white space at the ends of a field and, in floating
 * point, "inf" and "nan" are read, too. Text beyond the range of a double or float gives an infinity.
 *
 * Fields: a reader splits at exactly one separator character. Empty fields count, so two separators in a row have one
 * between them, and an empty text has one field, which is empty. A field that is no number reads as 0 and takes no
 * other field with it.
 *
 * Failure: no function throws, and only stringToStringVersionMap() logs.
 *
 * Threads: there is no state; every function may run on any thread at any time.
 */
class TARNWICK_EXPORT StringConversions
{
public:
    /** An object holds nothing; copying, moving and assigning one does nothing. */
    StringConversions() = default;
    /** @copydoc StringConversions() */
    StringConversions(const StringConversions &) = default;
    /** @copydoc StringConversions() */
    StringConversions(StringConversions &&) = default;
    /** @copydoc StringConversions() */
    StringConversions &operator=(const StringConversions &) = default;
    /** @copydoc StringConversions() */
    StringConversions &operator=(StringConversions &&) = default;

    /** Returns "true" or "false". */
    static QString boolToString(bool value);

    /** Returns true for "true" in any case and for "1", false for any other text, also one with blanks around. */
    static bool stringToBool(const QString &text);

    /** Returns @p value in decimal digits, for example "-7". */
    static QString intToString(int value);

    /** Returns the number in @p text, or @p defaultValue if it is none or does not fit: "12abc", "0x10", "2147483648".
     */
    static int stringToInt(const QString &text, int defaultValue = 0);

    /**
     * Returns mantissa times ten to the power of exponent for the form "<mantissa><separator><exponent>": "1.5D+3" with
     * the separator 'D' is 1500.
     *
     * A text without the separator is read as one number: "2.5", and with 'e' also "1.5E3", since the case counts. A
     * bad mantissa or exponent counts as 0; what follows a second separator is ignored. The product is made in double
     * and then narrowed; for a mantissa of 0 and a power beyond the range of double, as in "0e999", it is not a number.
     *
     * @param exponentSeparator a character in Latin-1
     */
    static float stringToFloat(const QString &text, char exponentSeparator = 'e');

    /** Returns the numbers with one blank between two, for example "1 -2 3"; an empty text for no numbers. */
    static QString integerArrayToString(const std::vector<int> &values);

    /**
     * Returns one number for each field between blanks: "1 x  2" is 1, 0, 0, 2.
     *
     * An empty text has one field, so it gives one 0: an empty list does not read back.
     */
    static std::vector<int> stringToIntegerArray(const QString &text);

    /**
     * Returns the form of integerArrayToString() for the first @p count numbers at @p values. If @p count is 0 or less,
     * @p values is not read and the text is empty.
     */
    static QString toString(const int *values, int count);

    /** Returns the address as "0x" and 16 lower-case hexadecimal digits; zeros for null. */
    static QString ptrToString(const void *pointer);

    /**
     * Returns the native text of the first sequence as a suffix for captions, for example " (Ctrl+S)". The other
     * sequences play no part. An empty list gives a text that is empty and not null.
     */
    static QString qkeySequencesToAppendableString(const QList<QKeySequence> &sequences);

    /** Returns "<x> <y>", for example "10 -20". */
    static QString qpointToString(const QPoint &point);

    /** Reads x and y from the first two fields between blanks; fewer than two give (0, 0), more are ignored. */
    static QPoint stringToQPoint(const QString &text);

    /**
     * Returns "<x> <y>" in format "g", for example "3.14 1.23e+06" with the precision 3.
     *
     * @param precision significant digits, passed on to QString::number(); 17 reads back exactly
     */
    static QString qpointfToString(const QPointF &point, int precision = 17);

    /** Reads x and y from the first two fields between blanks; fewer than two give (0, 0), more are ignored. */
    static QPointF stringToQPointF(const QString &text);

    /**
     * Returns the qpointfToString() texts of all points with a comma between two: "1 2,3.5 4". No points give an empty
     * text. There is no reader for this form.
     */
    static QString qpointfVectorToString(const std::vector<QPointF> &points, int precision = 17);

    /** Returns "<width> <height>", for example "640 480". */
    static QString qSizeToString(const QSize &size);

    /**
     * Reads the width from the first and the height from the last field between blanks, and ignores those between:
     * "640 x 480". A single field is both: "640" is 640 by 640, and an empty text is 0 by 0.
     */
    static QSize stringToQSize(const QString &text);

    /** Returns "<width> <height>" in format "g" with 17 significant digits, which read back exactly. */
    static QString qSizeFToString(const QSizeF &size);

    /** Reads a floating point size from the fields that stringToQSize() takes. */
    static QSizeF stringToQSizeF(const QString &text);

    /** Returns "<x>,<y>,<width>,<height>", for example "1,2,30,40". */
    static QString rectToString(const QRect &rect);

    /**
     * Reads x, y, width and height from the first four fields between commas; more are ignored, and fewer give the null
     * rectangle QRect().
     *
     * The right and the bottom edge, x + width - 1 and y + height - 1, stop at the ends of the range of int. What
     * width() and height() give is not promised then, nor for a size of -2147483648.
     */
    static QRect stringToRect(const QString &text);

    /**
     * Returns "<x> <y>" of the components widened to double.
     *
     * @param precision passed on to QString::number(): decimals if @p fixed, else the most significant digits; with 9
     *        significant digits a vector reads back exactly, but for the greatest float, whose text is rounded up to
     * one that reads as infinite; 17 do for that, too
     * @param fixed whether the format is "f", as in "1.500 0.100", or "g", as in "1.5 0.1"
     */
    static QString vector2DToString(const QVector2D &vector, int precision = 9, bool fixed = false);

    /** Reads x and y from two fields between blanks; any other number of fields gives the null vector. */
    static QVector2D stringToVector2D(const QString &text);

    /** Returns "<x> <y> <z>", with @p precision and @p fixed as for vector2DToString(). */
    static QString vector3DToString(const QVector3D &vector, int precision = 9, bool fixed = false);

    /** Reads x, y and z from three fields between blanks; any other number of fields gives the null vector. */
    static QVector3D stringToVector3D(const QString &text);

    /**
     * Returns the 16 elements, widened to double, row by row with @p separator between two, each in format "f" with 17
     * decimals: "0.10000000149011612". An element of a magnitude below 5e-18 shows as zeros only.
     */
    static QString matrix4x4ToString(const QMatrix4x4 &matrix, QChar separator = u' ');

    /**
     * Reads 16 fields at @p separator, row by row, each as a double narrowed to float, into a matrix of general type.
     *
     * @return empty if there are fewer or more than 16 fields, and only then
     */
    static utility::Optional<QMatrix4x4> stringToQMatrix4x4Safe(const QString &text, QChar separator = u' ');

    /** Returns the matrix of stringToQMatrix4x4Safe(), or the identity where that gives none. */
    static QMatrix4x4 stringToQMatrix4x4(const QString &text, QChar separator = u' ');

    /** Returns m11, m12, m13, m21 to m33 with a blank between two, each in format "f" with 6 decimals: "1.000000". */
    static QString transformToString(const QTransform &transform);

    /** Reads nine fields between blanks in the order of transformToString(); any other number gives the identity. */
    static QTransform stringToQTransform(const QString &text);

    /**
     * Returns "<key> <value> | <key> <value>" in the order of the map. Nothing is escaped, and there is no reader for
     * this form. An empty map gives a null string.
     */
    static QString mapToString(const QMap<QString, QString> &map);

    /** Returns the same form with the text of a version as value: "core 1.2.3 | ui 2.0". */
    static QString mapToString(const QMap<QString, QVersionNumber> &map);

    /**
     * Reads entries of a key, one or more blanks and a version, with "|" between two. White space around the entries,
     * keys and versions is skipped; only the blank U+0020 separates a key from its version.
     *
     * QVersionNumber::fromString() reads the version: "1.2abc" is 1.2, and "abc" a null version. The last of several
     * entries with one key wins.
     *
     * @return empty, after one warning `invalid version format ("<text>")` to Qt's default category, if an entry is
     *         empty, has no version, or has a blank in it, as "my app 1.0" has. So the text of an empty map is refused.
     */
    static utility::Optional<QMap<QString, QVersionNumber>> stringToStringVersionMap(const QString &text);
};

#endif

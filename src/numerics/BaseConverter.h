#ifndef TARNWICK_NUMERICS_BASECONVERTER_H
#define TARNWICK_NUMERICS_BASECONVERTER_H

#include <tarnwick_export.h>

#include <QString>

#include <string>

/**
 * @brief Converts a non-negative integer of any length from one base to another.
 *
 * There are four converters, each a constant global object:
 *
 * @code
 * BaseConverter::getDecimalToHexConverter().convert(std::string("255")); // "FF"
 * BaseConverter::getHexToDecimalConverter().convert(std::string("ff")); // "255"
 * @endcode
 *
 * Copies are independent of the original. A moved-from converter can only be assigned to or destroyed.
 *
 * Threads: all functions may be called on any thread, and several threads may use a converter at the same time. The
 * first call of each of the four functions creates its converter, which is destroyed by an exit handler. A static
 * object that uses a converter in its destructor must get it in its constructor, so that the object is destroyed first.
 */
class TARNWICK_EXPORT BaseConverter
{
public:
    /** Returns the converter from "01" to "0123456789". */
    static const BaseConverter &getBinaryToDecimalConverter();

    /** Returns the converter from "0123456789" to "01". */
    static const BaseConverter &getDecimalToBinaryConverter();

    /** Returns the converter from "0123456789" to "0123456789ABCDEF". */
    static const BaseConverter &getDecimalToHexConverter();

    /** Returns the converter from "0123456789ABCDEF" to "0123456789". */
    static const BaseConverter &getHexToDecimalConverter();

    /**
     * Converts @p value, whose first digit is the most significant one. Hexadecimal digits may be lower case letters.
     *
     * Any byte that is not a digit of the source base counts as a zero digit: signs, blanks, null bytes, bytes above
     * 127. "-1" is read as 01 and "1 0" as 100. The locale has no effect.
     *
     * The time is quadratic in the length: 39 digits take well under a microsecond, 20,000 digits some milliseconds.
     *
     * @param value digits of the source alphabet, possibly with leading zeros
     * @return digits of the target alphabet, in upper case, without leading zeros; "0" if @p value is empty or zero
     */
    std::string convert(const std::string &value) const;

    /**
     * Converts @p value as UTF-8. A character outside ASCII counts as one zero digit for each of its bytes in UTF-8.
     */
    QString convert(const QString &value) const;

    /** Returns the number of digits in the source alphabet: 2, 10 or 16. */
    unsigned int getSourceBase() const;

    /** Returns the number of digits in the target alphabet: 2, 10 or 16. */
    unsigned int getTargetBase() const;

    /** Returns the digits of the source alphabet in ascending order. */
    std::string getSourceBaseSet() const;

    /** Returns the digits of the target alphabet in ascending order. */
    std::string getTargetBaseSet() const;

private:
    TARNWICK_NO_EXPORT BaseConverter(const std::string &sourceBaseSet, const std::string &targetBaseSet);

    std::string sourceBaseSet;
    std::string targetBaseSet;
};

#endif

#ifndef TARNWICK_NUMERICS_BASECONVERTER_H
#define TARNWICK_NUMERICS_BASECONVERTER_H

#include <tarnwick_export.h>

#include <QString>

#include <string>

/**
 * @brief Rewrites a non-negative whole number of any length from one digit alphabet into another.
 *
 * There are four converters, each a constant object of the process:
 *
 * @code
 * BaseConverter::getDecimalToHexConverter().convert(std::string("255")); // "FF"
 * BaseConverter::getHexToDecimalConverter().convert(std::string("ff")); // "255"
 * @endcode
 *
 * A copy converts in the same way and owns its alphabets; one that was moved from can only be assigned to or destroyed.
 *
 * Threads: the four functions may be called on any thread, and any number of threads may use one converter at once.
 * Their converters live until the process ends or unloads the library. What uses one in the destructor of a static
 * object gets it in the constructor, too, and so goes first.
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
     * Converts @p value, most significant digit first. The letters of hexadecimal digits may be lower case.
     *
     * Any other byte counts as the zero digit where it stands: signs, blanks, null bytes, bytes above 127, digits that
     * the base does not have. "-1" is 1 and "1 0" is 100. The locale plays no part.
     *
     * Time grows with the square of the length: 39 digits take well under a microsecond, 20,000 some milliseconds.
     *
     * @param value digits of the source alphabet; leading zero digits are fine
     * @return digits of the target alphabet, letters in upper case, without leading zero digits; the zero digit alone
     *         for an empty @p value and for zero
     */
    std::string convert(const std::string &value) const;

    /**
     * Converts @p value by way of its UTF-8 form, see above: a character outside ASCII is as many zero digits as it has
     * bytes there.
     */
    QString convert(const QString &value) const;

    /** Returns the number of digits in the source alphabet: 2, 10 or 16. */
    unsigned int getSourceBase() const;

    /** Returns the number of digits in the target alphabet: 2, 10 or 16. */
    unsigned int getTargetBase() const;

    /** Returns the digits of the source in the order of their values, zero first. */
    std::string getSourceBaseSet() const;

    /** Returns the digits of the target in the order of their values, zero first. */
    std::string getTargetBaseSet() const;

private:
    TARNWICK_NO_EXPORT BaseConverter(const std::string &sourceBaseSet, const std::string &targetBaseSet);

    std::string sourceBaseSet;
    std::string targetBaseSet;
};

#endif

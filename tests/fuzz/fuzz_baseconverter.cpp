// Aims at: src/numerics/BaseConverter.cpp
#include "Fuzz.h"

#include <numerics/BaseConverter.h>

#include <gmpxx.h>

#include <cctype>
#include <string>

// Numbers of any length against GMP.

namespace {

std::string toText(const mpz_class &number, unsigned int base)
{
    return number.get_str(-static_cast<int>(base)); // a negative base gives upper case
}

/** Returns digits with other bytes between them, or a number close to a multiple of a power of two or ten, where the
 * converters cut. */
std::string makeDigits(Input &input, const BaseConverter &converter)
{
    if (input.oneIn(3)) {
        mpz_class number;
        mpz_ui_pow_ui(number.get_mpz_t(), input.oneIn(2) ? 2 : 10, input.integer<std::uint16_t>() % 7000);
        number = abs(number * input.integer<std::uint16_t>() - input.below(3));
        return toText(number, converter.getSourceBase());
    }
    std::string digits;
    while (!input.isAtEnd()) {
        digits += input.oneIn(20) ? input.integer<char>() : input.oneOf(converter.getSourceBaseSet());
    }
    return digits;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const BaseConverter converters[] = {BaseConverter::getBinaryToDecimalConverter(),
        BaseConverter::getDecimalToBinaryConverter(),
        BaseConverter::getDecimalToHexConverter(),
        BaseConverter::getHexToDecimalConverter()};
    Input input(data, size);
    const BaseConverter converter = input.oneOf(converters);
    const std::string text = makeDigits(input, converter);
    std::string known = '0' + text; // other bytes count as zeros; GMP takes none
    for (char &digit : known) {
        const int upper = std::toupper(static_cast<unsigned char>(digit));
        digit = converter.getSourceBaseSet().find(char(upper)) == std::string::npos ? '0' : digit;
    }
    const mpz_class number(known, static_cast<int>(converter.getSourceBase()));
    const auto show = &QByteArray::fromStdString;
    check("convert", show(converter.convert(text)), show(toText(number, converter.getTargetBase())), show(text));
    return 0;
}

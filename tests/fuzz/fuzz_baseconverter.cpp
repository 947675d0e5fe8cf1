// Aims at: src/numerics/BaseConverter.cpp
#include "Fuzz.h"

#include <numerics/BaseConverter.h>

#include <gmp.h>

#include <string>

// Numbers of any length against GMP.

namespace {

std::string takeText(mpz_t number, unsigned int base)
{
    char *const text = mpz_get_str(nullptr, -static_cast<int>(base), number); // a negative base gives upper case
    const std::string result = text;
    std::free(text);
    mpz_clear(number);
    return result;
}

/** Returns a number close to a multiple of a power of two or ten, where the converters cut. */
std::string makeRound(Input &input, unsigned int base)
{
    mpz_t number;
    mpz_init(number);
    mpz_ui_pow_ui(number, input.oneIn(2) ? 2 : 10, input.integer<std::uint16_t>() % 700);
    mpz_mul_ui(number, number, input.integer<std::uint16_t>());
    mpz_sub_ui(number, number, input.integer<std::uint8_t>() % 3U);
    mpz_abs(number, number);
    return takeText(number, base);
}

/** Returns digits, in part one repeated, or any bytes. */
std::string makeText(Input &input, const std::string &digits)
{
    const bool isForeign = input.oneIn(3);
    std::string text(input.oneIn(4) ? input.integer<std::uint16_t>() % 2500U : 0U, input.oneOf(digits));
    while (!input.isAtEnd()) {
        text += isForeign ? input.integer<char>() : input.oneOf(digits);
    }
    return text;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const struct
    {
        const BaseConverter &converter;
        unsigned int source;
        unsigned int target;
    } kinds[] = {{BaseConverter::getBinaryToDecimalConverter(), 2, 10},
        {BaseConverter::getDecimalToBinaryConverter(), 10, 2},
        {BaseConverter::getDecimalToHexConverter(), 10, 16},
        {BaseConverter::getHexToDecimalConverter(), 16, 10}};
    static const std::string allDigits = "0123456789ABCDEFabcdef";
    Input input(data, size);
    const auto &[converter, source, target] = kinds[input.below(4)];
    check("getSourceBase", converter.getSourceBase(), source);
    check("getSourceBaseSet", converter.getSourceBaseSet() == allDigits.substr(0, source), true);
    check("getTargetBase", converter.getTargetBase(), target);
    check("getTargetBaseSet", converter.getTargetBaseSet() == allDigits.substr(0, target), true);
    const std::string digits = allDigits.substr(0, source == 16 ? 22 : source);
    const std::string text = input.oneIn(3) ? makeRound(input, source) : makeText(input, digits);
    std::string known = '0' + text; // foreign bytes count as zeros; GMP takes none
    for (char &digit : known) {
        digit = digits.find(digit) == std::string::npos ? '0' : digit;
    }
    mpz_t number;
    mpz_init_set_str(number, known.c_str(), static_cast<int>(source));
    const std::string expected = takeText(number, target);
    check("convert",
        QByteArray::fromStdString(converter.convert(text)),
        QByteArray::fromStdString(expected),
        text.c_str());
    return 0;
}

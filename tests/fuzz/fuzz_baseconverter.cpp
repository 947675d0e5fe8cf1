// Aims at: src/numerics/BaseConverter.cpp
#include "Fuzz.h"

#include <numerics/BaseConverter.h>

#include <gmp.h>

#include <cctype>
#include <string>

// Numbers of any length against GMP. Only its C interface: on Windows, mini-gmp takes its place.

namespace {

std::string takeText(mpz_t number, unsigned int base)
{
    char *const text = mpz_get_str(nullptr, -static_cast<int>(base), number); // a negative base gives upper case
    const std::string result = text;
    std::free(text);
    mpz_clear(number);
    return result;
}

// Returns digits with other bytes between them, or a number close to a multiple of a power of two or ten, where the
// converters split.
std::string makeDigits(Input &input, const BaseConverter &converter)
{
    std::string digits;
    if (input.oneIn(3)) {
        mpz_t number;
        mpz_init(number);
        mpz_ui_pow_ui(number, input.oneIn(2) ? 2 : 10, input.integer<std::uint16_t>() % 7000);
        mpz_mul_ui(number, number, input.integer<std::uint16_t>());
        mpz_sub_ui(number, number, input.integer<std::uint8_t>() % 3U);
        mpz_abs(number, number);
        return takeText(number, converter.getSourceBase());
    }
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
        digit = converter.getSourceBaseSet().find(static_cast<char>(upper)) == std::string::npos ? '0' : digit;
    }
    mpz_t number;
    mpz_init_set_str(number, known.c_str(), static_cast<int>(converter.getSourceBase()));
    const auto show = &QByteArray::fromStdString;
    check("convert", show(converter.convert(text)), show(takeText(number, converter.getTargetBase())), show(text));
    return 0;
}

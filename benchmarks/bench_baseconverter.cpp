// The ratios to read, at the same number of decimal digits, are ByConverter to ByGmp (at most 1 at 39 digits, 4 at
// 2,000), and ByConverter to ByNaive, which works on the digit strings themselves.

#include <numerics/BaseConverter.h>

#include <benchmark/benchmark.h>
#include <gmp.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>

namespace {

using Convert = std::string (*)(const std::string &);

std::string convertByGmp(const std::string &value, int sourceBase, int targetBase)
{
    mpz_t number;
    mpz_init_set_str(number, value.c_str(), sourceBase);
    char *const digits = mpz_get_str(nullptr, targetBase, number);
    const std::string result = digits;
    std::free(digits);
    mpz_clear(number);
    return result;
}

unsigned int readNaively(const std::string &baseSet, const std::string &value)
{
    unsigned int result = 0;
    for (const char digit : value) {
        result = result * static_cast<unsigned int>(baseSet.size()) + static_cast<unsigned int>(baseSet.find(digit));
    }
    return result;
}

std::string writeNaively(const std::string &baseSet, unsigned int value)
{
    std::string result;
    do {
        result += baseSet[value % baseSet.size()];
        value /= static_cast<unsigned int>(baseSet.size());
    } while (value != 0);
    std::reverse(result.begin(), result.end());
    return result;
}

unsigned int divideNaively(const std::string &baseSet, std::string &number, unsigned int divisor)
{
    std::string quotient;
    const size_t length = number.size();
    for (size_t i = 0; i < length; ++i) {
        const size_t taken = i + 1 + number.size() - length;
        const unsigned int value = readNaively(baseSet, number.substr(0, taken));
        quotient += baseSet[value / divisor];
        number = writeNaively(baseSet, value % divisor) + number.substr(taken);
    }
    const unsigned int remainder = readNaively(baseSet, number);
    number = quotient.substr(std::min(quotient.find_first_not_of(baseSet.front()), quotient.size()));
    return remainder;
}

std::string convertNaively(std::string value, const std::string &sourceBaseSet, const std::string &targetBaseSet)
{
    std::transform(
        value.begin(), value.end(), value.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    std::string result;
    do {
        result += targetBaseSet[divideNaively(sourceBaseSet, value, static_cast<unsigned int>(targetBaseSet.size()))];
    } while (!value.empty());
    std::reverse(result.begin(), result.end());
    return result;
}

const std::string decimalDigits = "0123456789";
const std::string hexDigits = "0123456789ABCDEF";

std::string toHex(const std::string &value)
{
    return BaseConverter::getDecimalToHexConverter().convert(value);
}

std::string toHexByGmp(const std::string &value)
{
    return convertByGmp(value, 10, -16);
}

std::string toHexNaively(const std::string &value)
{
    return convertNaively(value, decimalDigits, hexDigits);
}

std::string toDecimal(const std::string &value)
{
    return BaseConverter::getHexToDecimalConverter().convert(value);
}

std::string toDecimalByGmp(const std::string &value)
{
    return convertByGmp(value, 16, 10);
}

std::string toDecimalNaively(const std::string &value)
{
    return convertNaively(value, hexDigits, decimalDigits);
}

// Returns a fixed number with state.range(0) decimal digits, in decimal or in hexadecimal form.
std::string makeDigits(benchmark::State &state, bool isHex)
{
    std::string digits;
    while (digits.size() < static_cast<std::size_t>(state.range(0))) {
        digits += static_cast<char>('1' + digits.size() * digits.size() % 9);
    }
    return isHex ? toHexByGmp(digits) : digits;
}

void run(benchmark::State &state, Convert convert, Convert reference, bool isHex)
{
    const std::string digits = makeDigits(state, isHex);
    if (convert(digits) != reference(digits)) {
        state.SkipWithError("wrong digits");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(convert(digits));
    }
}

} // namespace

BENCHMARK_CAPTURE(run, toHexByConverter, toHex, toHexByGmp, false)->Arg(39)->Arg(2000)->Arg(20000);
BENCHMARK_CAPTURE(run, toHexByGmp, toHexByGmp, toHexByGmp, false)->Arg(39)->Arg(2000)->Arg(20000);
BENCHMARK_CAPTURE(run, toHexByNaive, toHexNaively, toHexByGmp, false)->Arg(39)->Arg(2000);
BENCHMARK_CAPTURE(run, toDecimalByConverter, toDecimal, toDecimalByGmp, true)->Arg(39)->Arg(2000)->Arg(20000);
BENCHMARK_CAPTURE(run, toDecimalByGmp, toDecimalByGmp, toDecimalByGmp, true)->Arg(39)->Arg(2000)->Arg(20000);
BENCHMARK_CAPTURE(run, toDecimalByNaive, toDecimalNaively, toDecimalByGmp, true)->Arg(39)->Arg(2000);

BENCHMARK_MAIN();

#ifndef TARNWICK_TESTS_FUZZ_FUZZ_H
#define TARNWICK_TESTS_FUZZ_FUZZ_H

#include <QDebug>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

/** Runs one input through a target; a finding ends the process. Called by libFuzzer or by replay.cpp. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/** Ends the process with a message if the result of @p function for @p input is not what was @p expected. */
template <typename T, typename Text = QString>
void check(const char *function, const T &actual, const T &expected, const Text &input = {})
{
    if (!(actual == expected)) {
        qCritical() << function << "of" << input << "is" << actual << "but should be" << expected;
        std::abort();
    }
}

/** Draws values from the bytes of an input; when they are used up, every draw gives zeros. */
class Input
{
public:
    Input(const std::uint8_t *data, std::size_t size)
        : next(data)
        , end(data + size)
    {
    }

    bool isAtEnd() const { return next == end; }

    template <typename Integer>
    Integer integer()
    {
        Integer value = 0;
        const std::size_t size = std::min(sizeof value, static_cast<std::size_t>(end - next));
        std::copy_n(next, size, reinterpret_cast<std::uint8_t *>(&value));
        next += size;
        return value;
    }

    /** Returns a number from 0 to @p limit - 1, at most 255; takes one byte. */
    int below(int limit) { return integer<std::uint8_t>() % limit; }

    bool oneIn(int limit) { return below(limit) == limit - 1; }

    template <typename List>
    auto oneOf(const List &list)
    {
        const auto size = std::size(list);
        return list[static_cast<decltype(size)>(below(static_cast<int>(size)))];
    }

    /** Returns doubles of all sizes, and many that lie halfway between two texts or next to a power of ten. */
    double real()
    {
        const int kind = below(6);
        const auto bits = integer<qint64>();
        const auto whole = static_cast<double>(bits >> below(64));
        double asBits;
        std::memcpy(&asBits, &bits, sizeof asBits);
        const double reals[] = {whole,
            asBits,
            std::ldexp(whole, -below(120)),
            std::nextafter(std::pow(10.0, below(60) - 30), below(2) * 1e300),
            static_cast<double>(bits % 1000000) / std::pow(10.0, below(8)),
            static_cast<double>(bits % 100000 * 10 + 5) * std::pow(10.0, below(25) - 5)};
        return reals[kind];
    }

    /** Returns up to @p limit characters of ASCII, entries of @p pieces and, now and then, any code units. */
    QString text(const QStringList &pieces, int limit = 32)
    {
        QString result;
        for (int count = below(limit + 1); count > 0; --count) {
            const int byte = below(256);
            result += byte < 128 ? QChar(byte) : byte < 248 ? pieces[byte % pieces.size()] : QChar(integer<char16_t>());
        }
        return result;
    }

private:
    const std::uint8_t *next;
    const std::uint8_t *end;
};

#endif

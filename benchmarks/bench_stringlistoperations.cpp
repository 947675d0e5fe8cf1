// StringListOperations compared with QSet alone, and unite() with QStringList::removeDuplicates().

#include <strings/StringListOperations.h>

#include <QSet>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using Texts = QList<QString>;

namespace {

// Returns texts with 100,000 consecutive numbers from `first` on. No two texts share their data.
Texts makeTexts(int first)
{
    Texts texts;
    for (int i = 0; i < 100'000; ++i) {
        texts.append(u"element %1"_s.arg(first + i));
    }
    return texts;
}

QSet<QString> makeSet(const Texts &texts)
{
    return QSet<QString>(texts.cbegin(), texts.cend());
}

Texts bareIntersection(const Texts &first, const Texts &second)
{
    return makeSet(first).intersect(makeSet(second)).values();
}

Texts bareSubtract(const Texts &first, const Texts &second)
{
    return makeSet(first).subtract(makeSet(second)).values();
}

Texts bareUnite(const Texts &first, const Texts &second)
{
    return makeSet(first).unite(makeSet(second)).values();
}

Texts uniteByRemovingDuplicates(const Texts &first, const Texts &second)
{
    Texts result = first + second;
    result.removeDuplicates();
    return result;
}

// Applies an operation to two lists that have half of their elements in common.
void operation(benchmark::State &state, Texts (*apply)(const Texts &, const Texts &))
{
    const Texts first = makeTexts(0);
    const Texts second = makeTexts(50'000);
    for (auto _ : state) {
        benchmark::DoNotOptimize(apply(first, second));
    }
}

BENCHMARK_CAPTURE(operation, intersection, &StringListOperations::intersection)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, intersection_bare, &bareIntersection)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, subtract, &StringListOperations::subtract)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, subtract_bare, &bareSubtract)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, unite, &StringListOperations::unite)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, unite_bare, &bareUnite)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, unite_removeDuplicates, &uniteByRemovingDuplicates)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

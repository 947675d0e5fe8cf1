// NaturalSort::sort(), compared with creating and sorting collation keys, and with a sort by comparisons.

#include <strings/NaturalSort.h>

#include <QCollator>
#include <QLocale>
#include <QRandomGenerator>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

enum class Kind {
    Ascii,
    Umlauts,
    Sorted,
};

constexpr int everydaySize = 100'000;

QCollator makeCollator()
{
    QCollator collator;
    collator.setNumericMode(true);
    return collator;
}

void sortByComparison(QList<QString> &list)
{
    const QCollator collator = makeCollator();
    std::sort(list.begin(), list.end(), [&collator](const QString &first, const QString &second) {
        return collator.compare(first, second) < 0;
    });
}

QList<QString> makeNames(int size, Kind kind)
{
    QRandomGenerator random(1);
    const QString &pattern = kind == Kind::Ascii ? u"Series %1/image%2.png"_s : u"Ansicht %1/Größe%2.png"_s;
    QList<QString> names;
    names.reserve(size);
    for (int i = 0; i < size; ++i) {
        names.append(pattern.arg(random.bounded(50)).arg(random.bounded(size)));
    }
    if (kind == Kind::Sorted) {
        sortByComparison(names);
    }
    return names;
}

// Runs `sort` on fresh copies of a list. The time of each function includes the copy.
template <typename Sort>
void run(benchmark::State &state, const char *locale, Kind kind, Sort sort)
{
    QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
    const QList<QString> names = makeNames(static_cast<int>(state.range(0)), kind);
    for (auto _ : state) {
        QList<QString> list = names;
        sort(list);
        benchmark::DoNotOptimize(list.constData());
    }
}

void naturalSort(benchmark::State &state, const char *locale, Kind kind)
{
    run(state, locale, kind, &NaturalSort::sort);
}

void comparisonSort(benchmark::State &state, const char *locale, Kind kind)
{
    run(state, locale, kind, &sortByComparison);
}

void keySort(benchmark::State &state, const char *locale, Kind kind)
{
    run(state, locale, kind, [](const QList<QString> &list) {
        const QCollator collator = makeCollator();
        std::vector<QCollatorSortKey> keys;
        keys.reserve(static_cast<std::size_t>(list.size()));
        for (const QString &text : list) {
            keys.push_back(collator.sortKey(text));
        }
        std::sort(keys.begin(), keys.end());
        benchmark::DoNotOptimize(keys.data());
    });
}

BENCHMARK_CAPTURE(naturalSort, ascii_en_US, "en_US", Kind::Ascii)->Arg(everydaySize)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keySort, ascii_en_US, "en_US", Kind::Ascii)->Arg(everydaySize)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(comparisonSort, ascii_en_US, "en_US", Kind::Ascii)->Arg(everydaySize)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(naturalSort, umlauts_de_DE, "de_DE", Kind::Umlauts)->Arg(20)->Arg(everydaySize);
BENCHMARK_CAPTURE(keySort, umlauts_de_DE, "de_DE", Kind::Umlauts)->Arg(20)->Arg(everydaySize);
BENCHMARK_CAPTURE(comparisonSort, umlauts_de_DE, "de_DE", Kind::Umlauts)->Arg(20)->Arg(everydaySize);
BENCHMARK_CAPTURE(naturalSort, sorted_de_DE, "de_DE", Kind::Sorted)->Arg(everydaySize);
BENCHMARK_CAPTURE(keySort, sorted_de_DE, "de_DE", Kind::Sorted)->Arg(everydaySize);
BENCHMARK_CAPTURE(comparisonSort, sorted_de_DE, "de_DE", Kind::Sorted)->Arg(everydaySize);
BENCHMARK_CAPTURE(naturalSort, ascii_C, "C", Kind::Ascii)->Arg(everydaySize);
BENCHMARK_CAPTURE(comparisonSort, ascii_C, "C", Kind::Ascii)->Arg(everydaySize);

} // namespace

BENCHMARK_MAIN();

// Ratios to read: Equal/* to QtEquality/* (at most 5), Reversed/*/100000 to Reversed/*/10000 (at most 15), and Reversed
// to NaiveReversed, which searches the second array for each element of the first.

#include <qtextensions/JsonCompare.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

enum Kind { Integers, Texts, Records, Deep };

QJsonValue makeElement(Kind kind, int i)
{
    switch (kind) {
    case Integers:
        return i;
    case Texts:
        return u"name %1"_s.arg(i);
    case Records:
        return QJsonObject{
            {u"id"_s, i}, {u"name"_s, u"name %1"_s.arg(i)}, {u"tags"_s, QJsonArray{i % 7, i % 3, u"x"_s}}};
    case Deep:
        break;
    }
    return QJsonArray{QJsonObject{{u"a"_s, QJsonArray{QJsonArray{i + 0.5}, i}}}};
}

// Parses the document from text, as applications usually do, so that no two documents share their data.
QJsonDocument makeDocument(const benchmark::State &state, bool isReversed)
{
    const auto kind = static_cast<Kind>(state.range(0));
    const int count = static_cast<int>(state.range(1));
    QJsonArray array;
    for (int i = 0; i < count; ++i) {
        array.append(makeElement(kind, isReversed ? count - 1 - i : i));
    }
    return QJsonDocument::fromJson(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

bool compareNaively(const QJsonArray &first, QJsonArray second)
{
    for (const QJsonValueConstRef value : first) {
        qsizetype i = 0;
        while (i < second.size() && QJsonValue(value) != second.at(i)) {
            ++i;
        }
        if (i == second.size()) {
            return false;
        }
        second.removeAt(i);
    }
    return true;
}

void runComparison(benchmark::State &state, bool isReversed)
{
    const QJsonDocument first = makeDocument(state, false);
    const QJsonDocument second = makeDocument(state, isReversed);
    for (auto _ : state) {
        if (!json::compare(first, second)) {
            state.SkipWithError("documents differ");
        }
    }
}

void Equal(benchmark::State &state)
{
    runComparison(state, false);
}

void QtEquality(benchmark::State &state)
{
    const QJsonDocument first = makeDocument(state, false);
    const QJsonDocument second = makeDocument(state, false);
    for (auto _ : state) {
        benchmark::DoNotOptimize(first == second);
    }
}

void Reversed(benchmark::State &state)
{
    runComparison(state, true);
}

void NaiveReversed(benchmark::State &state)
{
    const QJsonArray first = makeDocument(state, false).array();
    const QJsonArray second = makeDocument(state, true).array();
    for (auto _ : state) {
        if (!compareNaively(first, second)) {
            state.SkipWithError("documents differ");
        }
    }
}

} // namespace

BENCHMARK(Equal)->ArgNames({"kind", "n"})->ArgsProduct({{Integers, Texts, Records, Deep}, {100, 100000}});
BENCHMARK(QtEquality)->ArgNames({"kind", "n"})->ArgsProduct({{Integers, Texts, Records, Deep}, {100, 100000}});
BENCHMARK(Reversed)->ArgNames({"kind", "n"})->ArgsProduct({{Integers, Texts, Records, Deep}, {1000, 10000, 100000}});
BENCHMARK(NaiveReversed)->ArgNames({"kind", "n"})->ArgsProduct({{Integers, Texts, Records, Deep}, {1000}});

BENCHMARK_MAIN();

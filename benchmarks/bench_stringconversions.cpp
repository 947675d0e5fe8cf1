#include "ReferenceConversions.h"

#include <conversions/StringConversions.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

// Measures each conversion as "<name>/own" and the same sequence of calls to Qt as "<name>/reference". The result is
// the ratio of the two in one run. The number after lists, point vectors and maps is their number of elements.

namespace {

std::mt19937 generator; // has the same seed in each run

int randomInt()
{
    return std::uniform_int_distribution<int>(-100000, 100000)(generator);
}

double randomReal()
{
    return std::uniform_real_distribution<double>(-1000, 1000)(generator);
}

template <typename MakeInput>
auto makeInputs(MakeInput makeInput, std::size_t count = 1000)
{
    std::vector<decltype(makeInput())> inputs;
    for (std::size_t i = 0; i < count; ++i) {
        inputs.push_back(makeInput());
    }
    return inputs;
}

template <typename Input, typename Convert>
void registerOne(const std::string &name, const std::vector<Input> &inputs, Convert convert)
{
    benchmark::RegisterBenchmark(name.c_str(), [inputs, convert](benchmark::State &state) {
        for ([[maybe_unused]] const auto iteration : state) {
            for (const Input &input : inputs) {
                benchmark::DoNotOptimize(convert(input));
            }
        }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(inputs.size()));
    });
}

template <typename Input, typename Own, typename Reference>
void registerPair(const std::string &name, const std::vector<Input> &inputs, Own own, Reference reference)
{
    registerOne(name + "/own", inputs, own);
    registerOne(name + "/reference", inputs, reference);
}

// Measures a writer on values that `makeValue` creates, and its reader on their texts.
template <typename MakeValue, typename Write, typename ReferenceWrite, typename Read, typename ReferenceRead>
void registerForm(const std::string &form,
    MakeValue makeValue,
    Write write,
    ReferenceWrite referenceWrite,
    Read read,
    ReferenceRead referenceRead)
{
    const auto values = makeInputs(makeValue);
    std::vector<QString> texts;
    for (const auto &value : values) {
        texts.push_back(referenceWrite(value));
    }
    registerPair(form + "/write", values, write, referenceWrite);
    registerPair(form + "/read", texts, read, referenceRead);
}

void registerIntegers()
{
    using Own = StringConversions;
    registerForm(
        "QPoint",
        [] { return QPoint(randomInt(), randomInt()); },
        &Own::qpointToString,
        &reference::qpointToString,
        &Own::stringToQPoint,
        &reference::stringToQPoint);
    registerForm(
        "QSize",
        [] { return QSize(randomInt(), randomInt()); },
        &Own::qSizeToString,
        &reference::qSizeToString,
        &Own::stringToQSize,
        &reference::stringToQSize);
    registerForm(
        "QRect",
        [] { return QRect(randomInt(), randomInt(), randomInt(), randomInt()); },
        &Own::rectToString,
        &reference::rectToString,
        &Own::stringToRect,
        &reference::stringToRect);
}

void registerReals()
{
    using Own = StringConversions;
    for (const int precision : {17, 6}) {
        registerForm(
            "QPointF-" + std::to_string(precision) + "digits",
            [] { return QPointF(randomReal(), randomReal()); },
            [precision](const QPointF &point) { return Own::qpointfToString(point, precision); },
            [precision](const QPointF &point) { return reference::qpointfToString(point, precision); },
            &Own::stringToQPointF,
            &reference::stringToQPointF);
    }
    registerForm(
        "QSizeF",
        [] { return QSizeF(randomReal(), randomReal()); },
        &Own::qSizeFToString,
        &reference::qSizeFToString,
        &Own::stringToQSizeF,
        &reference::stringToQSizeF);
    registerPair(
        "float/read",
        makeInputs([] { return QString::number(randomReal(), 'e', 8); }),
        [](const QString &text) { return Own::stringToFloat(text, 'e'); },
        [](const QString &text) { return reference::stringToFloat(text, 'e'); });
    // Quarters have few digits, like coordinates that a person enters.
    registerForm(
        "QSizeF-quarters",
        [] { return QSizeF(randomInt() / 4.0, randomInt() / 4.0); },
        &Own::qSizeFToString,
        &reference::qSizeFToString,
        &Own::stringToQSizeF,
        &reference::stringToQSizeF);
}

void registerVectors(const std::string &suffix, int precision, bool fixed)
{
    using Own = StringConversions;
    const auto component = [] { return static_cast<float>(randomReal()); };
    registerForm(
        "QVector2D-" + suffix,
        [component] { return QVector2D(component(), component()); },
        [precision, fixed](const QVector2D &vector) { return Own::vector2DToString(vector, precision, fixed); },
        [precision, fixed](const QVector2D &vector) { return reference::vector2DToString(vector, precision, fixed); },
        &Own::stringToVector2D,
        &reference::stringToVector2D);
    registerForm(
        "QVector3D-" + suffix,
        [component] { return QVector3D(component(), component(), component()); },
        [precision, fixed](const QVector3D &vector) { return Own::vector3DToString(vector, precision, fixed); },
        [precision, fixed](const QVector3D &vector) { return reference::vector3DToString(vector, precision, fixed); },
        &Own::stringToVector3D,
        &reference::stringToVector3D);
}

QMatrix4x4 randomMatrix()
{
    QMatrix4x4 matrix;
    matrix.translate(static_cast<float>(randomReal()), static_cast<float>(randomReal()));
    matrix.rotate(static_cast<float>(randomReal()), QVector3D(1, 2, 3));
    return matrix;
}

void registerMatrices(const std::string &suffix, QMatrix4x4 (*makeMatrix)(), QTransform (*makeTransform)())
{
    using Own = StringConversions;
    registerForm(
        "QMatrix4x4-" + suffix,
        makeMatrix,
        [](const QMatrix4x4 &matrix) { return Own::matrix4x4ToString(matrix, u' '); },
        [](const QMatrix4x4 &matrix) { return reference::matrix4x4ToString(matrix, u' '); },
        [](const QString &text) { return Own::stringToQMatrix4x4(text, u' '); },
        [](const QString &text) { return reference::stringToQMatrix4x4Safe(text, u' ').value_or(QMatrix4x4()); });
    registerForm("QTransform-" + suffix,
        makeTransform,
        &Own::transformToString,
        &reference::transformToString,
        &Own::stringToQTransform,
        &reference::stringToQTransform);
}

void registerCollections(std::size_t count)
{
    using Own = StringConversions;
    const std::string elements = "/" + std::to_string(count);
    // One input for each: a value or its text.
    const std::vector<std::vector<int>> lists = {makeInputs([] { return static_cast<int>(generator()); }, count)};
    const std::vector<std::vector<QPointF>> paths = {
        makeInputs([] { return QPointF(randomReal(), randomReal()); }, count)};
    QMap<QString, QString> texts;
    QMap<QString, QVersionNumber> versions;
    for (int i = 0; i < static_cast<int>(count); ++i) {
        const QString key = QStringLiteral("module%1").arg(i);
        texts.insert(key, QStringLiteral("value %1").arg(i));
        versions.insert(key, QVersionNumber(i % 20, i % 300, i));
    }
    const std::vector<QMap<QString, QVersionNumber>> maps = {versions};
    const auto referenceList = [](const std::vector<int> &list) {
        return reference::toString(list.data(), static_cast<int>(list.size()));
    };

    registerPair("list" + elements + "/write", lists, &Own::integerArrayToString, referenceList);
    registerPair("list" + elements + "/read",
        std::vector<QString>{referenceList(lists[0])},
        &Own::stringToIntegerArray,
        &reference::stringToIntegerArray);
    registerPair(
        "path" + elements + "/write",
        paths,
        [](const std::vector<QPointF> &path) { return Own::qpointfVectorToString(path, 17); },
        [](const std::vector<QPointF> &path) { return reference::qpointfVectorToString(path, 17); });
    registerPair(
        "texts" + elements + "/write",
        std::vector<QMap<QString, QString>>{texts},
        [](const QMap<QString, QString> &map) { return Own::mapToString(map); },
        [](const QMap<QString, QString> &map) { return reference::mapToString(map); });
    registerPair(
        "versions" + elements + "/write",
        maps,
        [](const QMap<QString, QVersionNumber> &map) { return Own::mapToString(map); },
        [](const QMap<QString, QVersionNumber> &map) { return reference::mapToString(map); });
    registerPair("versions" + elements + "/read",
        std::vector<QString>{reference::mapToString(versions)},
        &Own::stringToStringVersionMap,
        &reference::stringToStringVersionMap);
}

} // namespace

int main(int argc, char **argv)
{
    registerIntegers();
    registerReals();
    registerVectors("9digits", 9, false);
    registerVectors("3decimals", 3, true);
    registerMatrices(
        "identity", [] { return QMatrix4x4(); }, [] { return QTransform(); });
    registerMatrices("rotated", &randomMatrix, [] { return randomMatrix().toTransform(); });
    for (const std::size_t count : {1000U, 31623U, 1000000U}) {
        registerCollections(count);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "../../benchmarks/PlainConversions.h"

#include <conversions/StringConversions.h>

#include <QDataStream>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <random>

// Readers and writers against the plain sequences of calls to Qt, over generated texts and values and by their bits,
// and what the readers allocate.

#if defined(__GLIBC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define COUNTS_ALLOCATIONS

static std::atomic<int> allocated = 0;

// Stands in for the function of the C library, which stays within reach under its other name.
extern "C" void *__libc_malloc(std::size_t size);

extern "C" void *malloc(std::size_t size) noexcept
{
    ++allocated;
    return __libc_malloc(size);
}
#endif

using namespace Qt::StringLiterals;

namespace {

using Own = StringConversions;

std::mt19937_64 generator; // seeded alike in each run

int below(int limit)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(generator);
}

/** Returns doubles of all sizes, and many that lie halfway between two texts or next to a power of ten. */
double makeReal()
{
    const quint64 bits = generator();
    const auto whole = static_cast<double>(static_cast<qint64>(bits) >> below(64));
    const double reals[] = {qFromUnaligned<double>(&bits),
        std::ldexp(whole, -below(90)),
        double(static_cast<float>(std::ldexp(whole, -below(120)))),
        std::nextafter(std::pow(10.0, below(60) - 30), below(2) * std::numeric_limits<double>::max()),
        (below(2000000) - 1000000) / std::pow(10.0, below(8)),
        (10.0 * below(100000) + 5) * std::pow(10.0, below(25) - 5),
        std::ldexp(below(4096) - 2048, -below(14))};
    return reals[below(7)];
}

QString makeNumber()
{
    QString jumble(below(40), u'0');
    std::generate(jumble.begin(), jumble.end(), [] { return u"0123456789.-e+"[below(14)]; });
    const QString numbers[] = {QString::number(static_cast<qint64>(generator()) >> below(64)),
        QString::number(makeReal(), "gfe"[below(3)], below(22) - 1),
        QString::number(below(1000)),
        jumble};
    return numbers[below(4)];
}

/** Returns what may stand in a field: a number most of the time, or pieces that readers like to get wrong. */
QString makeField()
{
    static const QStringList pieces = QStringLiteral(
        "|\t|\u00a0|\u3000|\ufeff|\n|+|-|\u2212|+5|--5|0x10|0b1|010|1,000|1_000|1.|.5|.|1.e5|1e|e5|1E5|1e+5|1e-05|1e5."
        "0|1-2|\u0661\u0662|\uff11|\u0967|nan|-nan|inf|-inf|infinity|NaN|2147483647|-2147483648|2147483648|"
        "99999999999999999999|1e999|-1e999|1e-999|4.9e-324|2.4703282292062327e-324|3.4028235677973366e38|3.40282356e38|"
        "1e39|-1e-46|1.4e-45|0e999|1.00000017881393421514957253748434595763683319091796875001|-0|x")
                                          .split(u'|');
    if (below(2) == 0) {
        return makeNumber();
    }
    QString field;
    for (int count = 1 + below(2); count > 0; --count) {
        field += pieces[below(int(pieces.size()))];
    }
    if (below(8) == 0) {
        field.insert(below(int(field.size()) + 1), QChar(u'\0'));
    }
    return below(4) == 0 ? field + makeNumber() : field;
}

/** Returns a text of fields, often as many as @p wanted, with a separator too many now and then. */
QString makeText(const QString &separator, int wanted)
{
    QString text = makeField();
    for (int count = below(3) == 0 ? below(wanted + 3) : wanted - 1; count > 0; --count) {
        text += separator.repeated(below(20) == 0 ? 2 : 1) + makeField();
    }
    return text;
}

template <typename T>
QByteArray bitsOf(const T &value)
{
    QByteArray bits;
    QDataStream stream(&bits, QDataStream::WriteOnly);
    stream << value;
    return bits;
}

QByteArray bitsOf(const std::vector<int> &values)
{
    return bitsOf(QList<int>(values.begin(), values.end()));
}

template <typename T>
QByteArray bitsOf(const std::optional<T> &result)
{
    return result ? bitsOf(*result) : QByteArray();
}

template <typename T>
QByteArray bitsOf(const utility::Optional<T> &result)
{
    return result.hasValue() ? bitsOf(result.getValue()) : QByteArray();
}

/** Returns entries of a map, most of them such as a reader takes. */
QString makeEntries()
{
    static const char16_t *const paddings[] = {u"", u" ", u"  ", u"\t", u"\u00a0"};
    const auto padding = [] { return QString::fromUtf16(paddings[below(5)]); };
    QStringList entries;
    for (int count = 1 + below(4); count > 0; --count) {
        const QString version = below(4) == 0 ? makeField() : QString::number(below(300)) + u".1."_s + makeNumber();
        entries << padding() + makeField() + u' ' + padding() + version + padding();
    }
    return entries.join(u'|');
}

/** Returns texts without long numbers: where edges leave the range of int, the plain sequence overflows. */
QString makeRectText()
{
    static const QRegularExpression longNumber(u"[0-9]{10}"_s);
    const QString text = makeText(u","_s, 4);
    return text.contains(longNumber) ? makeRectText() : text;
}

using MakeText = std::function<QString()>;
using ReadBits = std::function<QByteArray(const QString &)>;
using ReadOnly = std::function<void(const QString &)>;

/** Adds a reader, with a text for which it makes as many @p allocations as its result takes. */
template <typename OwnRead, typename PlainRead>
void addReader(
    const char *form, const MakeText &make, OwnRead own, PlainRead plainly, const QString &text, int allocations)
{
    QTest::newRow(form) << make << ReadBits([own](const QString &input) { return bitsOf(own(input)); })
                        << ReadBits([plainly](const QString &input) { return bitsOf(plainly(input)); })
                        << ReadOnly([own](const QString &input) { static_cast<void>(own(input)); }) << text
                        << allocations;
}

} // namespace

class StringConversionsAgreementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readers_data();
    void readers();
    void writersOfIntegers();
    void writersOfReals();
    void allocations_data();
    void allocations();
};

void StringConversionsAgreementTest::readers_data()
{
    QTest::addColumn<MakeText>("make");
    QTest::addColumn<ReadBits>("own");
    QTest::addColumn<ReadBits>("plainly");
    QTest::addColumn<ReadOnly>("readOnly");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("allocations");

    const auto fields = [](const char16_t *separator, int wanted) {
        return [separator = QString::fromUtf16(separator), wanted] { return makeText(separator, wanted); };
    };
    const auto ownFloat = [](const QString &text) { return Own::stringToFloat(text, 'e'); };
    const auto plainFloat = [](const QString &text) { return plain::stringToFloat(text, 'e'); };
    const auto ownMatrix = [](const QString &text) { return Own::stringToQMatrix4x4Safe(text, u';'); };
    const auto plainMatrix = [](const QString &text) { return plain::stringToQMatrix4x4Safe(text, u';'); };
    const QString matrixText = Own::matrix4x4ToString(QMatrix4x4(), u';');
    const QString transformText = Own::transformToString(QTransform());
    addReader("float", fields(u"e", 2), ownFloat, plainFloat, u"1.5e3"_s, 0);
    addReader(
        "list", fields(u" ", 8), &Own::stringToIntegerArray, &plain::stringToIntegerArray, u"7 "_s.repeated(99), 1);
    addReader("point", fields(u" ", 2), &Own::stringToQPoint, &plain::stringToQPoint, u"10 -20 30"_s, 0);
    addReader("pointf", fields(u" ", 2), &Own::stringToQPointF, &plain::stringToQPointF, u"1.5 -2.25e+10"_s, 0);
    addReader("size", fields(u" ", 2), &Own::stringToQSize, &plain::stringToQSize, u"640 x 480"_s, 0);
    addReader("sizef", fields(u" ", 2), &Own::stringToQSizeF, &plain::stringToQSizeF, u"0.5 nan"_s, 0);
    addReader("rect", &makeRectText, &Own::stringToRect, &plain::stringToRect, u"1,2,30,40"_s, 0);
    addReader("2d", fields(u" ", 2), &Own::stringToVector2D, &plain::stringToVector2D, u"1.5 2.5"_s, 0);
    addReader("3d", fields(u" ", 3), &Own::stringToVector3D, &plain::stringToVector3D, u"1.5 x 2.5"_s, 0);
    addReader("matrix", fields(u";", 16), ownMatrix, plainMatrix, matrixText, 0);
    addReader("transform", fields(u" ", 9), &Own::stringToQTransform, &plain::stringToQTransform, transformText, 0);
    // The map, and for each entry a node and a key.
    const auto ownMap = &Own::stringToStringVersionMap;
    addReader("versions", &makeEntries, ownMap, &plain::stringToStringVersionMap, u"core 1.2.3 | ui 2.0"_s, 5);
}

void StringConversionsAgreementTest::readers()
{
    QFETCH(const MakeText, make);
    QFETCH(const ReadBits, own);
    QFETCH(const ReadBits, plainly);

    const auto previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const auto restore = qScopeGuard([previous] { qInstallMessageHandler(previous); });
    for (int i = 0; i < 10000; ++i) {
        const QString text = make();
        if (own(text) != plainly(text)) {
            QFAIL(qUtf8Printable(QDebug::toString(text)));
        }
    }
}

void StringConversionsAgreementTest::writersOfIntegers()
{
    for (int i = 0; i < 5000; ++i) {
        const auto integer = [] { return static_cast<int>(generator()) >> below(32); };
        std::vector<int> values(static_cast<std::size_t>(below(200)));
        std::generate(values.begin(), values.end(), integer);
        QCOMPARE(Own::integerArrayToString(values), plain::toString(values.data(), static_cast<int>(values.size())));

        const QPoint point(integer() / 2, integer() / 2);
        const QSize size(integer() / 2, integer() / 2);
        QCOMPARE(Own::qpointToString(point), plain::qpointToString(point));
        QCOMPARE(Own::qSizeToString(size), plain::qSizeToString(size));
        QCOMPARE(Own::rectToString(QRect(point, size)), plain::rectToString(QRect(point, size)));

        const QMap<QString, QVersionNumber> versions = {{makeField(), QVersionNumber(integer(), integer())},
            {makeField(), QVersionNumber(QList<int>(below(9), integer()))}};
        const QMap<QString, QString> texts = {
            {makeField(), makeText(u"|"_s, 3)}, {makeField(), makeField().repeated(99)}};
        QCOMPARE(Own::mapToString(versions), plain::mapToString(versions));
        QCOMPARE(Own::mapToString(texts), plain::mapToString(texts));
    }
}

void StringConversionsAgreementTest::writersOfReals()
{
    for (int i = 0; i < 10000; ++i) {
        const int precision = below(50) == 0 ? below(300) - 150 : below(21) - 1;
        const bool fixed = below(2) == 0;
        const QPointF point(makeReal(), makeReal());
        const QSizeF size(makeReal(), makeReal());
        const auto real = [] { return static_cast<float>(makeReal()); };
        const QVector2D flat(real(), real());
        const QVector3D solid(real(), real(), real());
        const QMatrix4x4 matrix(real(), real(), real(), 0, 1, real(), 0, 0, -1, 0.5, real(), 0, 0, 0, 0, 1);
        const QTransform transform(makeReal(), makeReal(), 0, makeReal(), makeReal(), 0, makeReal(), -makeReal(), 1);
        const std::vector<QPointF> path(static_cast<std::size_t>(below(8)), point);

        QCOMPARE(Own::qpointfToString(point, precision), plain::qpointfToString(point, precision));
        QCOMPARE(Own::qpointfVectorToString(path, precision), plain::qpointfVectorToString(path, precision));
        QCOMPARE(Own::qSizeFToString(size), plain::qSizeFToString(size));
        QCOMPARE(Own::vector2DToString(flat, precision, fixed), plain::vector2DToString(flat, precision, fixed));
        QCOMPARE(Own::vector3DToString(solid, precision, fixed), plain::vector3DToString(solid, precision, fixed));
        QCOMPARE(Own::matrix4x4ToString(matrix, u','), plain::matrix4x4ToString(matrix, u','));
        QCOMPARE(Own::transformToString(transform), plain::transformToString(transform));
    }
}

void StringConversionsAgreementTest::allocations_data()
{
    readers_data();
}

void StringConversionsAgreementTest::allocations()
{
#ifdef COUNTS_ALLOCATIONS
    QFETCH(const ReadOnly, readOnly);
    QFETCH(const QString, text);

    const int before = allocated;
    readOnly(text);
    QTEST(allocated - before, "allocations");
#else
    // Not QSKIP, whose use with one argument clang finds fault with.
    QTest::qSkip("counts calls of glibc's malloc, which sanitizers replace, in builds by GCC", __FILE__, __LINE__);
#endif
}

QTEST_GUILESS_MAIN(StringConversionsAgreementTest)
#include "tst_stringconversions_agreement.moc"

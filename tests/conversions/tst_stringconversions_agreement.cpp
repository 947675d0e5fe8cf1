#include "../../benchmarks/PlainConversions.h"
#include "../LogRecorder.h"

#include <conversions/StringConversions.h>

#include <QDataStream>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

// Readers and writers against the plain sequences of calls to Qt, over generated texts and values and by their bits,
// and what the readers allocate.

static std::atomic<int> allocated = 0; // stays 0 where nothing counts

#if defined(__GLIBC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
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

/** Compares a reader with the plain one; for @p text it makes as many @p allocations as its result takes. */
template <typename MakeText, typename OwnRead, typename PlainRead>
void compare(const char *form, MakeText make, OwnRead own, PlainRead plainly, const QString &text, int allocations = 0)
{
    const int before = allocated;
    static_cast<void>(own(text));
    QVERIFY2(allocated == 0 || allocated - before == allocations, form);
    for (int i = 0; i < 10000; ++i) {
        const QString generated = make();
        if (bitsOf(own(generated)) != bitsOf(plainly(generated))) {
            QFAIL(qUtf8Printable(QString::fromLatin1(form) + u' ' + QDebug::toString(generated)));
        }
    }
}

} // namespace

class StringConversionsAgreementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readers();
    void writers();
};

void StringConversionsAgreementTest::readers()
{
    const auto fields = [](char16_t separator, int wanted) {
        return [separator, wanted] { return makeText(QChar(separator), wanted); };
    };
    // Short numbers only: where edges leave the range of int, the plain sequence overflows.
    const QRegularExpression longNumber(u"[0-9]{9,}"_s);
    const auto rects = [longNumber] { return makeText(u","_s, 4).replace(longNumber, u"7"_s); };
    const auto entries = [] { return makeField() + u' ' + makeText(u"\t |\u00a0key  "_s, 3); };
    const auto ownFloat = [](const QString &text) { return Own::stringToFloat(text, 'e'); };
    const auto plainFloat = [](const QString &text) { return plain::stringToFloat(text, 'e'); };
    const auto ownMatrix = [](const QString &text) { return Own::stringToQMatrix4x4Safe(text, u';'); };
    const auto plainMatrix = [](const QString &text) { return plain::stringToQMatrix4x4Safe(text, u';'); };
    const auto ownMap = &Own::stringToStringVersionMap;
    const QString matrixText = Own::matrix4x4ToString(QMatrix4x4(), u';');
    const QString transformText = Own::transformToString(QTransform());
    const QString listText = u"7 "_s.repeated(99);
    const LogRecorder log;
    compare("float", fields(u'e', 2), ownFloat, plainFloat, u"1.5e3"_s);
    compare("list", fields(u' ', 8), &Own::stringToIntegerArray, &plain::stringToIntegerArray, listText, 1);
    compare("point", fields(u' ', 2), &Own::stringToQPoint, &plain::stringToQPoint, u"10 -20 30"_s);
    compare("pointf", fields(u' ', 2), &Own::stringToQPointF, &plain::stringToQPointF, u"1.5 -2.25e+10"_s);
    compare("size", fields(u' ', 2), &Own::stringToQSize, &plain::stringToQSize, u"640 x 480"_s);
    compare("sizef", fields(u' ', 2), &Own::stringToQSizeF, &plain::stringToQSizeF, u"0.5 nan"_s);
    compare("rect", rects, &Own::stringToRect, &plain::stringToRect, u"1,2,30,40"_s);
    compare("2d", fields(u' ', 2), &Own::stringToVector2D, &plain::stringToVector2D, u"1.5 2.5"_s);
    compare("3d", fields(u' ', 3), &Own::stringToVector3D, &plain::stringToVector3D, u"1.5 x 2.5"_s);
    compare("matrix", fields(u';', 16), ownMatrix, plainMatrix, matrixText);
    compare("transform", fields(u' ', 9), &Own::stringToQTransform, &plain::stringToQTransform, transformText);
    // The map, and for each entry a node and a key.
    compare("versions", entries, ownMap, &plain::stringToStringVersionMap, u"core 1.2.3 | ui 2.0"_s, 5);
}

void StringConversionsAgreementTest::writers()
{
    const auto integer = [] { return static_cast<int>(generator()) >> below(32); };
    const auto real = [] { return static_cast<float>(makeReal()); };
    for (int i = 0; i < 10000; ++i) {
        std::vector<int> values(static_cast<std::size_t>(below(100)));
        std::generate(values.begin(), values.end(), integer);
        QCOMPARE(Own::integerArrayToString(values), plain::toString(values.data(), static_cast<int>(values.size())));
        const QRect rect(integer() / 2, integer() / 2, integer() / 2, integer() / 2);
        QCOMPARE(Own::qpointToString(rect.topLeft()), plain::qpointToString(rect.topLeft()));
        QCOMPARE(Own::qSizeToString(rect.size()), plain::qSizeToString(rect.size()));
        QCOMPARE(Own::rectToString(rect), plain::rectToString(rect));

        const int precision = below(50) == 0 ? below(300) - 150 : below(21) - 1;
        const bool fixed = below(2) == 0;
        const std::vector<QPointF> path(static_cast<std::size_t>(below(8)), QPointF(makeReal(), makeReal()));
        const QSizeF size(makeReal(), makeReal());
        const QVector3D vector(real(), real(), real());
        const QMatrix4x4 matrix(real(), real(), real(), 0, 1, real(), 0, 0, -1, 0.5, real(), 0, 0, 0, 0, 1);
        const QTransform transform(makeReal(), makeReal(), 0, makeReal(), makeReal(), 0, makeReal(), -makeReal(), 1);
        QCOMPARE(Own::qpointfVectorToString(path, precision), plain::qpointfVectorToString(path, precision));
        QCOMPARE(Own::qSizeFToString(size), plain::qSizeFToString(size));
        QCOMPARE(Own::vector3DToString(vector, precision, fixed), plain::vector3DToString(vector, precision, fixed));
        QCOMPARE(Own::matrix4x4ToString(matrix, u','), plain::matrix4x4ToString(matrix, u','));
        QCOMPARE(Own::transformToString(transform), plain::transformToString(transform));

        const QVersionNumber version(QList<int>(below(9), integer()));
        const QMap<QString, QVersionNumber> versions = {{makeField(), version}, {makeField(), QVersionNumber(i, 1)}};
        const QMap<QString, QString> texts = {{makeField(), makeField()}, {makeField(), makeField().repeated(99)}};
        QCOMPARE(Own::mapToString(versions), plain::mapToString(versions));
        QCOMPARE(Own::mapToString(texts), plain::mapToString(texts));
    }
}

QTEST_GUILESS_MAIN(StringConversionsAgreementTest)
#include "tst_stringconversions_agreement.moc"

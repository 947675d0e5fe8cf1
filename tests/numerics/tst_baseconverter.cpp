#include <numerics/BaseConverter.h>

#include <QTest>

#include <gmp.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <type_traits>

using namespace Qt::StringLiterals;

class BaseConverterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void converters_data();
    void converters();
    void values_data();
    void values();
    void againstGmp_data();
    void againstGmp();
    void utf8BytesAreZeroDigits();
    void copies();
};

static_assert(!std::is_default_constructible_v<BaseConverter>);

namespace {
// Converts the digits to lower and to upper case and foreign bytes to zeros by itself, as GMP takes none.
std::string convertByGmp(std::string value, int sourceBase, int targetBase)
{
    for (char &digit : value) {
        const char lower = digit >= 'A' && digit <= 'F' ? char(digit + ('a' - 'A')) : digit;
        const int number = lower >= 'a' && lower <= 'f' ? lower - 'a' + 10
            : lower >= '0' && lower <= '9'              ? lower - '0'
                                                        : sourceBase;
        digit = number < sourceBase ? lower : '0';
    }
    mpz_t number;
    if (mpz_init_set_str(number, value.empty() ? "0" : value.c_str(), sourceBase) != 0) {
        qFatal("GMP does not take %s", value.c_str());
    }
    char *const digits = mpz_get_str(nullptr, -targetBase, number); // a negative base gives upper case
    const std::string result = digits;
    std::free(digits);
    mpz_clear(number);
    return result;
}

void addConverterRows()
{
    QTest::addColumn<const BaseConverter *>("converter");
    QTest::addColumn<int>("sourceBase");
    QTest::addColumn<int>("targetBase");

    QTest::newRow("binary to decimal") << &BaseConverter::getBinaryToDecimalConverter() << 2 << 10;
    QTest::newRow("decimal to binary") << &BaseConverter::getDecimalToBinaryConverter() << 10 << 2;
    QTest::newRow("decimal to hexadecimal") << &BaseConverter::getDecimalToHexConverter() << 10 << 16;
    QTest::newRow("hexadecimal to decimal") << &BaseConverter::getHexToDecimalConverter() << 16 << 10;
}
} // namespace

void BaseConverterTest::converters_data()
{
    addConverterRows();
}

void BaseConverterTest::converters()
{
    QFETCH(const BaseConverter *, converter);
    QFETCH(int, sourceBase);
    QFETCH(int, targetBase);

    const std::string digits = "0123456789ABCDEF";
    QCOMPARE(converter->getSourceBase(), unsigned(sourceBase));
    QCOMPARE(converter->getTargetBase(), unsigned(targetBase));
    QCOMPARE(converter->getSourceBaseSet(), digits.substr(0, size_t(sourceBase)));
    QCOMPARE(converter->getTargetBaseSet(), digits.substr(0, size_t(targetBase)));
    for (const std::string &zero : {std::string(), std::string("0"), std::string(300, '0'), std::string(70, '\0')}) {
        QCOMPARE(converter->convert(zero), std::string("0"));
    }
}

void BaseConverterTest::values_data()
{
    QTest::addColumn<const BaseConverter *>("converter");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("result");

    const BaseConverter *const fromHex = &BaseConverter::getHexToDecimalConverter();
    const BaseConverter *const toHex = &BaseConverter::getDecimalToHexConverter();
    QTest::newRow("leading zeros") << &BaseConverter::getDecimalToBinaryConverter() << u"007"_s << u"111"_s;
    QTest::newRow("leading zeros, hexadecimal") << fromHex << u"00FF"_s << u"255"_s;
    QTest::newRow("lower case") << fromHex << u"fF"_s << u"255"_s;
    QTest::newRow("upper case") << toHex << u"255"_s << u"FF"_s;
    QTest::newRow("2^128") << toHex << u"340282366920938463463374607431768211456"_s << u'1' + QString(32, u'0');
    QTest::newRow("10^19 - 1") << toHex << u"9999999999999999999"_s << u"8AC7230489E7FFFF"_s;
    QTest::newRow("letters a base lacks") << toHex << u"1A0"_s << u"64"_s;
    QTest::newRow("sign, blank, letter behind F") << fromHex << u"-1 G"_s << u"256"_s;
    QTest::newRow("digits a base lacks") << &BaseConverter::getBinaryToDecimalConverter() << u"1201"_s << u"9"_s;
}

void BaseConverterTest::values()
{
    QFETCH(const BaseConverter *, converter);
    QFETCH(QString, value);

    QTEST(converter->convert(value), "result");
    QTEST(QString::fromStdString(converter->convert(value.toStdString())), "result");
}

void BaseConverterTest::againstGmp_data()
{
    addConverterRows();
}

void BaseConverterTest::againstGmp()
{
    QFETCH(const BaseConverter *, converter);
    QFETCH(int, sourceBase);
    QFETCH(int, targetBase);

    // All lengths around the chunks of 16, 19 and 64 digits, and some long ones.
    QList<size_t> lengths = {999, 2000, 20000};
    for (size_t length = 0; length < 200; ++length) {
        lengths << length;
    }
    std::mt19937 random(42);
    const std::string digits =
        std::string("0123456789ABCDEF").substr(0, size_t(sourceBase)) + (sourceBase > 10 ? "abcdef" : "");
    for (const size_t length : std::as_const(lengths)) {
        std::string plain(length, '0');
        std::string foreign(length, '0');
        for (size_t i = 0; i < length; ++i) {
            plain[i] = digits[random() % digits.size()];
            foreign[i] = random() % 4 == 0 ? char(random() % 256) : plain[i];
        }
        for (const std::string &value :
            {plain, foreign, std::string(length, digits.back()), '1' + std::string(length, '0')}) {
            QCOMPARE(converter->convert(value), convertByGmp(value, sourceBase, targetBase));
        }
    }
}

void BaseConverterTest::utf8BytesAreZeroDigits()
{
    const BaseConverter &converter = BaseConverter::getBinaryToDecimalConverter();
    QCOMPARE(converter.convert(u"1é"_s), u"4"_s);
    QCOMPARE(converter.convert(u"1\U0001F600"_s), u"16"_s);
    QCOMPARE(converter.convert(u"1\uFF11"_s), u"8"_s); // a digit one, but not that of the alphabet
}

void BaseConverterTest::copies()
{
    std::unique_ptr<BaseConverter> copy = std::make_unique<BaseConverter>(BaseConverter::getHexToDecimalConverter());
    BaseConverter assigned = BaseConverter::getBinaryToDecimalConverter();
    assigned = *copy;
    const BaseConverter moved = std::move(*copy);
    copy.reset();
    QCOMPARE(assigned.convert(u"ff"_s), u"255"_s);
    QCOMPARE(moved.convert(u"ff"_s), u"255"_s);
    QCOMPARE(BaseConverter::getHexToDecimalConverter().getSourceBase(), 16u);
}

QTEST_GUILESS_MAIN(BaseConverterTest)
#include "tst_baseconverter.moc"

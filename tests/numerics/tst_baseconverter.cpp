#include <numerics/BaseConverter.h>

#include <QTest>

#include <gmp.h>

#include <cstdlib>
#include <random>
#include <utility>

using namespace Qt::StringLiterals;

class BaseConverterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void againstGmp_data();
    void againstGmp();
    void values_data();
    void values();
    void copies();
};

namespace {
// Foreign bytes become zeros here, as GMP takes none.
std::string convertByGmp(std::string value, int sourceBase, int targetBase)
{
    const std::string digits = sourceBase == 16 ? "0123456789abcdefABCDEF" : sourceBase == 10 ? "0123456789" : "01";
    for (char &digit : value) {
        digit = digits.find(digit) == std::string::npos ? '0' : digit;
    }
    mpz_t number;
    mpz_init_set_str(number, ('0' + value).c_str(), sourceBase);
    char *const text = mpz_get_str(nullptr, -targetBase, number); // a negative base gives upper case
    const std::string result = text;
    std::free(text);
    mpz_clear(number);
    return result;
}
} // namespace

void BaseConverterTest::againstGmp_data()
{
    QTest::addColumn<const BaseConverter *>("converter");
    QTest::addColumn<int>("sourceBase");
    QTest::addColumn<int>("targetBase");

    QTest::newRow("binary to decimal") << &BaseConverter::getBinaryToDecimalConverter() << 2 << 10;
    QTest::newRow("decimal to binary") << &BaseConverter::getDecimalToBinaryConverter() << 10 << 2;
    QTest::newRow("decimal to hexadecimal") << &BaseConverter::getDecimalToHexConverter() << 10 << 16;
    QTest::newRow("hexadecimal to decimal") << &BaseConverter::getHexToDecimalConverter() << 16 << 10;
}

void BaseConverterTest::againstGmp()
{
    QFETCH(const BaseConverter *, converter);
    QFETCH(int, sourceBase);
    QFETCH(int, targetBase);

    const std::string digits = converter->getSourceBaseSet();
    QCOMPARE(digits, std::string("0123456789ABCDEF").substr(0, size_t(sourceBase)));
    QCOMPARE(converter->getTargetBaseSet(), std::string("0123456789ABCDEF").substr(0, size_t(targetBase)));
    QCOMPARE(converter->getSourceBase(), unsigned(sourceBase));
    QCOMPARE(converter->getTargetBase(), unsigned(targetBase));

    // All lengths around the chunks of 16, 19 and 64 digits, and a long one.
    std::mt19937 random(42);
    for (size_t length = 0; length <= 200; ++length) {
        std::string plain(length < 200 ? length : 20000, '0');
        std::string foreign = plain;
        for (size_t i = 0; i < plain.size(); ++i) {
            plain[i] = digits[random() % digits.size()];
            foreign[i] = random() % 4 == 0 ? char(random() % 256) : plain[i];
        }
        const std::string greatest(length, digits.back());
        for (const std::string &value : {plain, foreign, greatest, '1' + std::string(length, '\0')}) {
            QCOMPARE(converter->convert(value), convertByGmp(value, sourceBase, targetBase));
        }
    }
}

void BaseConverterTest::values_data()
{
    QTest::addColumn<const BaseConverter *>("converter");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("result");

    const BaseConverter *const fromHex = &BaseConverter::getHexToDecimalConverter();
    const BaseConverter *const toHex = &BaseConverter::getDecimalToHexConverter();
    QTest::newRow("empty") << fromHex << u""_s << u"0"_s;
    QTest::newRow("leading zeros, both cases") << fromHex << u"00fF"_s << u"255"_s;
    QTest::newRow("2^128") << toHex << u"340282366920938463463374607431768211456"_s << u'1' + QString(32, u'0');
    // An estimated quotient of the division by 10^19 is one too small here, and its remainder 10^19.
    QTest::newRow("295 * 10^38") << fromHex << u"56B1555600514C68A0FE2D77C000000000"_s << u"295"_s + QString(38, u'0');
    QTest::newRow("letters a base lacks") << toHex << u"1A0"_s << u"64"_s;
    QTest::newRow("sign, blank, letter behind F") << fromHex << u"-1 G"_s << u"256"_s;
    QTest::newRow("four bytes of UTF-8") << fromHex << u"1\U0001F600"_s << u"65536"_s;
}

void BaseConverterTest::values()
{
    QFETCH(const BaseConverter *, converter);
    QFETCH(QString, value);

    QTEST(converter->convert(value), "result");
}

void BaseConverterTest::copies()
{
    BaseConverter copy = BaseConverter::getHexToDecimalConverter();
    BaseConverter assigned = BaseConverter::getBinaryToDecimalConverter();
    assigned = copy;
    const BaseConverter moved = std::move(copy);
    QCOMPARE(assigned.convert(u"ff"_s), u"255"_s);
    QCOMPARE(moved.convert(u"ff"_s), u"255"_s);
    QCOMPARE(BaseConverter::getHexToDecimalConverter().convert(u"ff"_s), u"255"_s);
}

QTEST_GUILESS_MAIN(BaseConverterTest)
#include "tst_baseconverter.moc"

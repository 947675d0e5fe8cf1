#include <numerics/BaseConverter.h>

#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

class BaseConverterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void values_data();
    void values();
    void copies();
};

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

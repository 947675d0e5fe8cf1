#include <numerics/BaseConverter.h>

#include <QTest>

using namespace Qt::StringLiterals;

class BaseConverterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void values()
    {
        const BaseConverter &fromHex = BaseConverter::getHexToDecimalConverter();
        const BaseConverter &toHex = BaseConverter::getDecimalToHexConverter();
        QCOMPARE(fromHex.convert(u""_s), u"0"_s);
        QCOMPARE(fromHex.convert(u"00fF"_s), u"255"_s);
        QCOMPARE(toHex.convert(u"340282366920938463463374607431768211456"_s), u'1' + QString(32, u'0'));
        // An estimated quotient of the division by 10^19 is one too small here, and its remainder 10^19.
        QCOMPARE(fromHex.convert(u"56B1555600514C68A0FE2D77C000000000"_s), u"295"_s + QString(38, u'0'));
        BaseConverter copy = toHex;
        copy = fromHex;
        QCOMPARE(copy.convert(u"ff"_s), u"255"_s);
        QCOMPARE(toHex.convert(u"1A0"_s), u"64"_s); // letters the base lacks
        QCOMPARE(fromHex.convert(u"-1 G"_s), u"256"_s);
        QCOMPARE(fromHex.convert(u"1\U0001F600"_s), u"65536"_s); // four bytes of UTF-8
    }

    void readyMadeConverters()
    {
        const auto describe = [](const BaseConverter &converter) {
            return std::to_string(converter.getSourceBase()) + ' ' + converter.getSourceBaseSet() + ' '
                + std::to_string(converter.getTargetBase()) + ' ' + converter.getTargetBaseSet();
        };
        QCOMPARE(describe(BaseConverter::getBinaryToDecimalConverter()), std::string("2 01 10 0123456789"));
        QCOMPARE(describe(BaseConverter::getDecimalToBinaryConverter()), std::string("10 0123456789 2 01"));
        QCOMPARE(describe(BaseConverter::getDecimalToHexConverter()), std::string("10 0123456789 16 0123456789ABCDEF"));
        QCOMPARE(describe(BaseConverter::getHexToDecimalConverter()), std::string("16 0123456789ABCDEF 10 0123456789"));
    }
};

QTEST_GUILESS_MAIN(BaseConverterTest)
#include "tst_baseconverter.moc"

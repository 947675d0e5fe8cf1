#include <strings/NaturalSort.h>

#include <QTest>

using namespace Qt::StringLiterals;

class NaturalSortTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ordersPairs_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("number of more digits") << u"en_US"_s << u"scan 9"_s << u"scan 100"_s;
        QTest::newRow("numbers inside") << u"en_US"_s << u"x1.9b"_s << u"x1.10b"_s;
        QTest::newRow("letters before case") << u"en_US"_s << u"a"_s << u"B"_s;
        QTest::newRow("case") << u"en_US"_s << u"a"_s << u"A"_s;
        QTest::newRow("blank") << u"en_US"_s << u"a c"_s << u"ab"_s;
        QTest::newRow("umlaut as an accent") << u"en_US"_s << u"ö9"_s << u"z10"_s;
        QTest::newRow("umlaut as a letter") << u"sv_SE"_s << u"z10"_s << u"ö9"_s;
        QTest::newRow("number outside ASCII, which sort keys order differently") << u"sv_SE"_s << u"1١"_s << u"1a"_s;
        QTest::newRow("code units") << u"C"_s << u"B10"_s << u"a9"_s;
        QTest::newRow("number in the C locale") << u"C"_s << u"a10"_s << u"a9"_s;
    }
    void ordersPairs()
    {
        QFETCH(QString, locale);
        QFETCH(QString, first);
        QFETCH(QString, second);
        QLocale::setDefault(QLocale(locale));
        QVERIFY(NaturalSort::compare(first, second) < 0);
        QVERIFY(NaturalSort::compare(second, first) > 0);
        QCOMPARE(NaturalSort::compare(first, first), 0);
        const QList<QString> shared = {second, first, first};
        QList<QString> list = shared;
        list.reserve(10);
        const QString *const data = list.constData();
        NaturalSort::sort(list);
        QCOMPARE(list, QList<QString>({first, first, second}));
        QCOMPARE(list.constData(), data);
        QCOMPARE(list.capacity(), 10);
        QCOMPARE(shared, QList<QString>({second, first, first}));
    }
};

QTEST_GUILESS_MAIN(NaturalSortTest)
#include "tst_naturalsort.moc"

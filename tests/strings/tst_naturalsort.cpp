#include <strings/NaturalSort.h>

#include <QCollator>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QList<QString> makeTexts(const QString &characters)
{
    QRandomGenerator random(7);
    QList<QString> result(300);
    for (QString &text : result) {
        for (int length = random.bounded(8); length >= 0; --length) {
            text += characters.at(random.bounded(int(characters.size())));
        }
    }
    return result;
}

} // namespace

class NaturalSortTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(previousLocale); }

    void followsTheDefaultLocale()
    {
        QLocale::setDefault(QLocale(u"en_US"_s));
        QVERIFY(NaturalSort::compare(u"file2"_s, u"file10"_s) < 0);
        QVERIFY(NaturalSort::compare(u"x1.10"_s, u"x1.9"_s) > 0);
        QCOMPARE(NaturalSort::compare(u"01"_s, u"1"_s), 0);
        const QList<QString> shared = {u"z"_s, u"ö"_s, u"a10"_s, u"a9"_s};
        QList<QString> list = shared;
        NaturalSort::sort(list);
        QCOMPARE(list, QList<QString>({u"a9"_s, u"a10"_s, u"ö"_s, u"z"_s}));
        QLocale::setDefault(QLocale(u"sv_SE"_s));
        NaturalSort::sort(list);
        QCOMPARE(list, QList<QString>({u"a9"_s, u"a10"_s, u"z"_s, u"ö"_s}));
        QLocale::setDefault(QLocale::c());
        NaturalSort::sort(list);
        QCOMPARE(list, QList<QString>({u"a10"_s, u"a9"_s, u"z"_s, u"ö"_s}));
        QCOMPARE(shared, QList<QString>({u"z"_s, u"ö"_s, u"a10"_s, u"a9"_s}));
    }

    void sortsAsTheCollatorCompares_data()
    {
        QTest::addColumn<QList<QString>>("list");
        QTest::addColumn<bool>("isConsistent");
        const QList<QString> ascii = makeTexts(u"abcCdDhLlnNsSzZ 0123-_.'\u0001"_s);
        QTest::newRow("none") << QList<QString>() << true;
        QTest::newRow("ASCII") << ascii << true;
        QTest::newRow("empty and ignorable") << ascii + QList<QString>{u""_s, u"\u0001"_s, u""_s, u"\u0002"_s} << true;
        QTest::newRow("letters") << makeTexts(u"aäÄöoßs\u0301é12ø"_s) << true;
        QTest::newRow("Japanese") << makeTexts(u"かがカガヽーあ一二"_s) << true;
        QTest::newRow("other digits") << makeTexts(u"12\u0661\u0662\u0967\u0968\uff11一二"_s) << false;
        QTest::newRow("surrogates") << makeTexts(u"ab1"_s + QChar(0xd83d) + QChar(0xde00)) << false;
    }

    void sortsAsTheCollatorCompares()
    {
        QFETCH(QList<QString>, list);
        QFETCH(bool, isConsistent);
        for (const QString &locale : u"C en_US de_AT cs_CZ hu_HU ar_EG ja_JP"_s.split(u' ')) {
            QLocale::setDefault(QLocale(locale));
            QList<QString> sorted = list;
            sorted.reserve(2 * list.size());
            const QString *const place = sorted.constData();
            const qsizetype capacity = sorted.capacity();
            NaturalSort::sort(sorted);
            QCOMPARE(sorted.constData(), place);
            QCOMPARE(sorted.capacity(), capacity);

            QCollator collator;
            collator.setNumericMode(true);
            for (qsizetype i = 0; isConsistent && i < sorted.size(); ++i) {
                for (qsizetype j = i + 1; j < sorted.size(); ++j) {
                    QVERIFY2(collator.compare(sorted.at(i), sorted.at(j)) <= 0, qPrintable(locale));
                }
            }
            QList<QString> expected = list;
            expected.sort();
            sorted.sort();
            QCOMPARE(sorted, expected);
        }
    }

private:
    const QLocale previousLocale;
};

QTEST_GUILESS_MAIN(NaturalSortTest)
#include "tst_naturalsort.moc"

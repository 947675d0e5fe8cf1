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
        QCOMPARE(NaturalSort::compare(u"a"_s, u"a"_s), 0);
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
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QList<QString>>("list");
        QTest::addColumn<bool>("isConsistent");
        const QList<QString> ascii = makeTexts(u"abcCdDhLlnNsSzZ 0123-_.'\u0001"_s);
        const QList<QString> digits = makeTexts(u"12\u0661\u0662\u0967\u0968\uff11\u4e00\u4e8c"_s);
        for (const QString &locale : {u"C"_s, u"en_US"_s, u"de_AT"_s, u"cs_CZ"_s, u"hu_HU"_s, u"ar_EG"_s, u"ja_JP"_s}) {
            const auto addRow = [&locale](const char *name, const QList<QString> &list, bool isConsistent) {
                QTest::addRow("%s %s", qPrintable(locale), name) << locale << list << isConsistent;
            };
            addRow("none", {}, true);
            addRow("one", {u"a"_s}, true);
            addRow("ASCII", ascii, true);
            addRow("empty and ignorable", ascii + QList<QString>{u""_s, u"\u0001"_s, QString(), u"\u0002"_s}, true);
            addRow("letters", makeTexts(u"aäÄöoßs\u0301é12ø"_s), true);
            addRow("Japanese", makeTexts(u"かがカガヽーあ一二"_s), true);
            addRow("digits outside ASCII", digits, false);
            addRow("surrogates", makeTexts(u"ab1"_s + QChar(0xd83d) + QChar(0xde00)), false);
        }
    }

    void sortsAsTheCollatorCompares()
    {
        QFETCH(QString, locale);
        QFETCH(QList<QString>, list);
        QFETCH(bool, isConsistent);
        QLocale::setDefault(QLocale(locale));
        QList<QString> sorted = list;
        NaturalSort::sort(sorted);

        QCollator collator;
        collator.setNumericMode(true);
        for (qsizetype i = 0; isConsistent && i < sorted.size(); ++i) {
            for (qsizetype j = i + 1; j < sorted.size(); ++j) {
                QVERIFY2(collator.compare(sorted.at(i), sorted.at(j)) <= 0, qPrintable(sorted.at(i)));
            }
        }
        sorted.sort();
        list.sort();
        QCOMPARE(sorted, list);
    }

private:
    const QLocale previousLocale;
};

QTEST_GUILESS_MAIN(NaturalSortTest)
#include "tst_naturalsort.moc"

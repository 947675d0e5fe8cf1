#include <strings/StringListOperations.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace StringListOperations;
using Texts = QList<QString>;

namespace {

Texts sorted(Texts list)
{
    list.sort();
    return list;
}

Texts resized(Texts list, int newSize)
{
    resize(list, newSize);
    return list;
}

} // namespace

class StringListOperationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sets_data()
    {
        QTest::addColumn<Texts>("first");
        QTest::addColumn<Texts>("second");
        QTest::addColumn<Texts>("inBoth"); // sorted
        QTest::addColumn<Texts>("inFirstOnly"); // sorted
        QTest::addColumn<Texts>("united"); // in order of first occurrence
        const Texts none;
        const Texts aba = {u"a"_s, u"b"_s, u"a"_s};
        const Texts ab = {u"a"_s, u"b"_s};
        const Texts cbb = {u"c"_s, u"b"_s, u"b"_s};
        const Texts cases = {u"A"_s, u""_s, u"e\u0301"_s};
        const Texts others = {u"a"_s, u" "_s, u"\u00e9"_s};
        QTest::newRow("first only") << aba << none << none << ab << ab;
        QTest::newRow("second only") << none << aba << none << none << ab;
        QTest::newRow("same") << aba << aba << ab << none << ab;
        QTest::newRow("overlapping") << cbb << aba << Texts{u"b"_s} << Texts{u"c"_s} << Texts{u"c"_s, u"b"_s, u"a"_s};
        QTest::newRow("nothing folded") << cases << others << none << sorted(cases) << cases + others;
    }
    void sets()
    {
        QFETCH(Texts, first);
        QFETCH(Texts, second);
        QTEST(sorted(intersection(first, second)), "inBoth");
        QTEST(sorted(subtract(first, second)), "inFirstOnly");
        QTEST(unite(first, second), "united");
    }

    void resizes()
    {
        const Texts abc = {u"a"_s, u"b"_s, u"c"_s};
        QCOMPARE(resized(abc, -1), Texts());
        QCOMPARE(resized(abc, 1), Texts({u"a"_s}));
        QCOMPARE(resized(abc, 3).isSharedWith(abc), true);
        QCOMPARE(resized(abc, 5), Texts({u"a"_s, u"b"_s, u"c"_s, u""_s, u""_s}));
        QCOMPARE(resized(abc, 4).last().isNull(), false);
        QCOMPARE(abc, Texts({u"a"_s, u"b"_s, u"c"_s}));
    }
};

QTEST_GUILESS_MAIN(StringListOperationsTest)
#include "tst_stringlistoperations.moc"

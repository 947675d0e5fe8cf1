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
        QTest::newRow("none") << none << none << none << none << none;
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

    void resizes_data()
    {
        QTest::addColumn<int>("newSize");
        QTest::addColumn<Texts>("expected");
        QTest::newRow("negative") << -1 << Texts();
        QTest::newRow("none") << 0 << Texts();
        QTest::newRow("fewer") << 1 << Texts{u"a"_s};
        QTest::newRow("same") << 3 << Texts{u"a"_s, u"b"_s, u"c"_s};
        QTest::newRow("more") << 5 << Texts{u"a"_s, u"b"_s, u"c"_s, u""_s, u""_s};
    }
    void resizes()
    {
        QFETCH(int, newSize);
        const Texts shared = {u"a"_s, u"b"_s, u"c"_s};
        Texts list = shared;
        resize(list, newSize);
        QTEST(list, "expected");
        QCOMPARE(shared.size(), 3);
        QCOMPARE(list.isSharedWith(shared), newSize == 3);
        QCOMPARE(list.value(4, u""_s).isNull(), false);
    }
};

QTEST_GUILESS_MAIN(StringListOperationsTest)
#include "tst_stringlistoperations.moc"

#include <strings/StringListOperations.h>

#include <QRandomGenerator>
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

/** The elements of @p list that a plain search finds in @p other, or does not find there, each once. */
Texts select(const Texts &list, const Texts &other, bool found)
{
    Texts result;
    for (const QString &text : list) {
        if (other.contains(text) == found && !result.contains(text)) {
            result.append(text);
        }
    }
    return result;
}

Texts makeTexts(QRandomGenerator &random)
{
    Texts result(random.bounded(12));
    for (QString &text : result) {
        text = u"aAbBäe"_s.mid(random.bounded(6), random.bounded(2));
    }
    return result;
}

} // namespace

class StringListOperationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setOperationsAgreeWithPlainSearch()
    {
        QRandomGenerator random(1);
        for (int i = 0; i < 2000; ++i) {
            const Texts first = makeTexts(random);
            const Texts second = makeTexts(random);
            QCOMPARE(sorted(intersection(first, second)), sorted(select(first, second, true)));
            QCOMPARE(sorted(subtract(first, second)), sorted(select(first, second, false)));
            QCOMPARE(unite(first, second), select(first + second, {}, false));
        }
    }

    void resizes()
    {
        const Texts shared = {u"a"_s, u"b"_s, u"c"_s};
        for (const int newSize : {-1, 0, 1, 3, 5}) {
            Texts list = shared;
            resize(list, newSize);
            QCOMPARE(list, (shared + Texts{u""_s, u""_s}).first(std::max(newSize, 0)));
            QCOMPARE(shared.size(), 3);
            QCOMPARE(list.isSharedWith(shared), newSize == 3);
            QVERIFY(list.isEmpty() || !list.last().isNull());
        }
    }
};

QTEST_GUILESS_MAIN(StringListOperationsTest)
#include "tst_stringlistoperations.moc"

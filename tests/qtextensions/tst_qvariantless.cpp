#include <qtextensions/QVariantLess.h>

#include <QDateTime>
#include <QStringListModel>
#include <QTest>
#include <QTimeZone>
#include <QUrl>
#include <QUuid>

#include <algorithm>
#include <limits>
#include <map>
#include <random>

using namespace Qt::StringLiterals;
using qtextensions::QVariantLess;

class QVariantLessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void orderOfAType_data();
    void orderOfAType();
    void valuesOfOtherTypes();
    void keysOfAMap();
};

namespace {
// Makes indexes of any row, column and internal id.
class IndexMaker : public QStringListModel
{
public:
    using QStringListModel::QStringListModel;

    QVariant make(int row, int column, quintptr id) const { return createIndex(row, column, id); }
};

template <typename... Values>
void addRow(const char *name, const Values &...ascending)
{
    QTest::newRow(name) << QVariantList{QVariant::fromValue(ascending)...};
}
} // namespace

void QVariantLessTest::orderOfAType_data()
{
    QTest::addColumn<QVariantList>("ascending");

    const qint64 large = Q_INT64_C(1) << 53; // doubles end to tell integers apart here
    addRow("Bool", false, true);
    addRow("Int", std::numeric_limits<int>::min(), -1, 0, 9, 10);
    addRow("UInt", 0u, 1u, 0x80000000u);
    addRow("LongLong", -large - 1, -large, large, large + 1);
    addRow("ULongLong", quint64(large), quint64(large) + 1, ~quint64(0));
    addRow("Double", -std::numeric_limits<double>::infinity(), -0.5, 0.0, 1e-300, 1e300);
    addRow("QChar", QChar(u'A'), QChar(u'a'), QChar(u'é'), QChar(0xD800), QChar(0xFFFD));
    addRow("QString", u""_s, u"10"_s, u"9"_s, u"Z"_s, u"a"_s, u"ab"_s, u"é"_s, u"\U0001F600"_s, u"\uFF5E"_s);
    const QStringList a = {u"a"_s};
    addRow("QStringList", QStringList(), QStringList(u""_s), QStringList(u"B"_s), a, a + a, QStringList(u"ab"_s));
    addRow("QByteArray", QByteArray(), QByteArray("\0", 1), QByteArray("a"), QByteArray("a\0", 2), QByteArray("\x80"));
    addRow("QDate", QDate(), QDate(-1, 1, 1), QDate(1970, 1, 1), QDate(2024, 2, 29));
    addRow("QTime", QTime(0, 0, 0, 1), QTime(0, 1), QTime(23, 59, 59, 999));
    const auto atHour = [](int hour, int offset) {
        return QDateTime(QDate(2024, 1, 1), QTime(hour, 0), QTimeZone(offset * 3600));
    };
    addRow("QDateTime", atHour(3, 2), atHour(2, 0), atHour(1, -2));
    addRow("QUrl", QUrl(), QUrl(u"file:///a"_s), QUrl(u"http://a/1"_s), QUrl(u"http://a/2"_s), QUrl(u"http://b/"_s));
    addRow("QUuid", QUuid(), QUuid::fromString(u"{00000001-0000-4000-8000-000000000000}"_s));

    static const IndexMaker models[] = {IndexMaker({u"a"_s, u"b"_s}), IndexMaker()};
    const QModelIndex first = models[0].index(0);
    const QModelIndex second = models[0].index(1);
    addRow("QModelIndex, of a model", QModelIndex(), first, second);
    addRow("QPersistentModelIndex", QPersistentModelIndex(first), QPersistentModelIndex(second));
    QTest::newRow("QModelIndex") << QVariantList{models[0].make(0, 0, 0),
        models[1].make(0, 0, 0),
        models[0].make(0, 0, ~quintptr(0)),
        models[0].make(0, 1, 0),
        models[0].make(1, 0, 0)};
}

// A total order of values and their copies makes "equivalent" transitive, too: a strict weak order.
void QVariantLessTest::orderOfAType()
{
    QFETCH(QVariantList, ascending);

    for (qsizetype i = 0; i < ascending.size(); ++i) {
        QCOMPARE(ascending[i].typeId(), ascending[0].typeId());
        for (qsizetype j = 0; j < ascending.size(); ++j) {
            QCOMPARE(QVariantLess()(ascending[i], ascending[j]), i < j);
        }
    }
    QVariantList sorted = ascending;
    std::shuffle(sorted.begin(), sorted.end(), std::mt19937(1));
    std::sort(sorted.begin(), sorted.end(), QVariantLess());
    QCOMPARE(sorted, ascending);
}

void QVariantLessTest::valuesOfOtherTypes()
{
    const QVariantLess isLess;
    QVERIFY(!isLess(qQNaN(), 1.0) && !isLess(1.0, qQNaN()));
    QVERIFY(isLess(-1, QVariant()) && !isLess(0, QVariant()) && !isLess(QVariant(), 1));
    QVERIFY(isLess(u"10"_s, 9) && isLess(9, u"10"_s)); // the left one decides
    QVERIFY(isLess(-1, u"x"_s) && !isLess(0, u"x"_s));
    QVERIFY(!isLess(1.0f, 2.0f));
    QVERIFY(!isLess(QVariantList{1}, QVariantList{2}));
    QVERIFY(!isLess(QVariant::fromValue(std::string("a")), QVariant::fromValue(std::string("b"))));
}

void QVariantLessTest::keysOfAMap()
{
    std::map<QVariant, int, QVariantLess> map;
    for (const int key : {5, 3, 5, 1}) {
        map[key] += 1;
    }
    const std::map<QVariant, int, QVariantLess> copy = map;
    map = copy; // assigns the comparator along
    QCOMPARE(map.size(), 3u);
    QCOMPARE(map.at(5), 2);
    QCOMPARE(map.begin()->first, QVariant(1));
}

QTEST_GUILESS_MAIN(QVariantLessTest)
#include "tst_qvariantless.moc"

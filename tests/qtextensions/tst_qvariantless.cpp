#include <qtextensions/QVariantLess.h>

#include <QAbstractItemModel>
#include <QDateTime>
#include <QSizeF>
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
    void modelIndexesByAddress();
    void pairs_data();
    void pairs();
    void keysOfAMap();
};

namespace {
QVariantList toVariants(std::initializer_list<QVariant> values)
{
    return values;
}

QDateTime atUtc(qint64 milliseconds, int offset = 0)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::OffsetFromUTC, offset);
}
} // namespace

void QVariantLessTest::orderOfAType_data()
{
    QTest::addColumn<QVariantList>("ascending");

    QTest::newRow("Bool") << toVariants({false, true});
    QTest::newRow("Int") << toVariants({std::numeric_limits<int>::min(), -1, 0, 9, 10});
    QTest::newRow("UInt") << toVariants({0u, 1u, 0x80000000u, 0xFFFFFFFFu});
    QTest::newRow("LongLong") << toVariants(
        {std::numeric_limits<qlonglong>::min(), qlonglong(-1), Q_INT64_C(1) << 53, (Q_INT64_C(1) << 53) + 1});
    QTest::newRow("ULongLong") << toVariants({qulonglong(0), (Q_UINT64_C(1) << 53) + 1, ~Q_UINT64_C(0)});
    QTest::newRow("Double") << toVariants({-std::numeric_limits<double>::infinity(), -0.5, 0.0, 1e-300, 1e300});
    QTest::newRow("QChar") << toVariants({QChar(u'A'), QChar(u'a'), QChar(u'é'), QChar(0xD800), QChar(0xFFFD)});
    QTest::newRow("QString") << toVariants(
        {u""_s, u"10"_s, u"9"_s, u"Z"_s, u"a"_s, u"ab"_s, u"é"_s, u"\U0001F600"_s, u"\uFF5E"_s});
    QTest::newRow("QStringList") << toVariants({QStringList(),
        QStringList{u""_s},
        QStringList{u"B"_s},
        QStringList{u"a"_s},
        QStringList{u"a"_s, u""_s},
        QStringList{u"a"_s, u"b"_s},
        QStringList{u"ab"_s}});
    QTest::newRow("QByteArray") << toVariants({QByteArray(),
        QByteArray("\0", 1),
        QByteArray("a"),
        QByteArray("a\0", 2),
        QByteArray("b"),
        QByteArray("\x80"),
        QByteArray("\xFF")});
    QTest::newRow("QDate") << toVariants({QDate(), QDate(-1, 1, 1), QDate(1970, 1, 1), QDate(2024, 2, 29)});
    QTest::newRow("QTime") << toVariants({QTime(0, 0, 0, 1), QTime(0, 1), QTime(23, 59, 59, 999)});
    QTest::newRow("QDateTime") << toVariants({atUtc(-5), atUtc(0, 3600), atUtc(1, -3600), atUtc(2)});
    QTest::newRow("QUrl") << toVariants({QUrl(),
        QUrl(u"file:///a"_s),
        QUrl(u"http://a/1"_s),
        QUrl(u"http://a/2"_s),
        QUrl(u"http://b/1"_s),
        QUrl(u"http://b/1?q"_s)});
    QTest::newRow("QUuid") << toVariants({QUuid(),
        QUuid(u"{00000001-0000-4000-8000-000000000000}"_s),
        QUuid(u"{80000000-0000-4000-8000-000000000000}"_s)});

    static QStringListModel model(QStringList{u"a"_s, u"b"_s, u"c"_s});
    QVariantList indexes = {QModelIndex()};
    QVariantList persistentIndexes;
    for (int row = 0; row < 3; ++row) {
        indexes << model.index(row);
        persistentIndexes << QPersistentModelIndex(model.index(row));
    }
    QTest::newRow("QModelIndex") << indexes;
    QTest::newRow("QPersistentModelIndex") << persistentIndexes;
}

// A total order over values and their copies is what makes "equivalent" transitive, too: a strict weak order.
void QVariantLessTest::orderOfAType()
{
    QFETCH(QVariantList, ascending);

    const QVariantLess isLess;
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        QCOMPARE(ascending[i].typeId(), ascending[0].typeId());
        for (qsizetype j = 0; j < ascending.size(); ++j) {
            QCOMPARE(isLess(ascending[i], QVariant(ascending[j])), i < j);
        }
    }
    QVariantList sorted = ascending + ascending;
    std::shuffle(sorted.begin(), sorted.end(), std::mt19937(1));
    std::sort(sorted.begin(), sorted.end(), isLess);
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        QCOMPARE(sorted[i], ascending[i / 2]);
    }
}

namespace {
// Makes indexes of any row, column and internal id.
class IndexMaker : public QStringListModel
{
public:
    QVariant make(int row, int column, quintptr id) const { return createIndex(row, column, id); }
};
} // namespace

void QVariantLessTest::modelIndexesByAddress()
{
    const std::array<IndexMaker, 2> models;
    const QVariantList ascending = {
        models[0].make(0, 0, 0),
        models[1].make(0, 0, 0),
        models[0].make(0, 0, 1),
        models[1].make(0, 0, 1),
        models[0].make(0, 0, ~quintptr(0)),
        models[0].make(0, 1, 0),
        models[0].make(1, 0, 0),
    };
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        for (qsizetype j = 0; j < ascending.size(); ++j) {
            QCOMPARE(QVariantLess()(ascending[i], ascending[j]), i < j);
        }
    }
}

void QVariantLessTest::pairs_data()
{
    QTest::addColumn<QVariant>("lhs");
    QTest::addColumn<QVariant>("rhs");
    QTest::addColumn<bool>("isLess");
    QTest::addColumn<bool>("isGreater");

    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("not a number") << QVariant(notANumber) << QVariant(1.0) << false << false;
    QTest::newRow("invalid is 0 on the right") << QVariant(-1) << QVariant() << true << false;
    QTest::newRow("invalid is 0") << QVariant(0) << QVariant() << false << false;
    QTest::newRow("left decides, both ways") << QVariant(u"10"_s) << QVariant(9) << true << true;
    QTest::newRow("no number counts as 0") << QVariant(-1) << QVariant(u"x"_s) << true << false;
    QTest::newRow("unlisted float") << QVariant(1.0f) << QVariant(2.0f) << false << false;
    QTest::newRow("unlisted long") << QVariant::fromValue(1L) << QVariant::fromValue(2L) << false << false;
    QTest::newRow("unlisted list") << QVariant(QVariantList{1}) << QVariant(QVariantList{2}) << false << false;
    QTest::newRow("unlisted user type") << QVariant::fromValue(std::string("a"))
                                        << QVariant::fromValue(std::string("b")) << false << false;
}

void QVariantLessTest::pairs()
{
    QFETCH(QVariant, lhs);
    QFETCH(QVariant, rhs);

    QTEST(QVariantLess()(lhs, rhs), "isLess");
    QTEST(QVariantLess()(rhs, lhs), "isGreater");
}

void QVariantLessTest::keysOfAMap()
{
    std::map<QVariant, int, QVariantLess> map;
    for (const int key : {5, 3, 5, 1}) {
        map[key] += 1;
    }
    const std::map<QVariant, int, QVariantLess> copy = map;
    map = copy; // a sorted container assigns its comparator along
    QCOMPARE(map.size(), 3u);
    QCOMPARE(map.at(5), 2);
    QCOMPARE(map.begin()->first, QVariant(1));
}

QTEST_GUILESS_MAIN(QVariantLessTest)
#include "tst_qvariantless.moc"

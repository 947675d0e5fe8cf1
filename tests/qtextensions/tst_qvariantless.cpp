#include <qtextensions/QVariantLess.h>

#include <QDateTime>
#include <QStringListModel>
#include <QTest>
#include <QTimeZone>
#include <QUrl>
#include <QUuid>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

const qtextensions::QVariantLess isLess;

struct Model : QStringListModel
{
    using QStringListModel::createIndex;
};

void add(const char *row, const QVariant &lesser, const QVariant &greater)
{
    QTest::newRow(row) << lesser << greater;
}

} // namespace

class QVariantLessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); } // in which "a" comes before "B"

    void orders_data()
    {
        QTest::addColumn<QVariant>("lesser");
        QTest::addColumn<QVariant>("greater");
        add("bool", false, true);
        add("int", -1, 0);
        add("uint", 1U, 0x80000000U);
        const qint64 large = Q_INT64_C(1) << 53;
        add("qlonglong, no doubles", large, large + 1);
        add("qulonglong", static_cast<quint64>(large), std::numeric_limits<quint64>::max());
        add("double", 1.0, 1.0 + 1e-15);
        add("QChar, case", QChar(u'B'), QChar(u'a'));
        add("QChar, unsigned", QChar(u'a'), QChar(u'\uff5e'));
        add("QString, case", u"B"_s, u"a"_s);
        add("QString, code units", u"😀"_s, u"～"_s);
        add("QStringList, elements", QStringList{u"A"_s, u"b"_s}, QStringList{u"a"_s});
        add("QStringList, prefix", QStringList{u"a"_s}, QStringList{u"a"_s, {}});
        add("QByteArray, NUL", QByteArrayLiteral("a\0a"), QByteArrayLiteral("a\0b"));
        add("QDate, no text", QDate(9999, 1, 1), QDate(10000, 1, 1));
        add("QTime, milliseconds", QTime(1, 2, 3, 4), QTime(1, 2, 3, 5));
        const QDateTime noon(QDate(2024, 2, 29), QTime(12, 0), QTimeZone::utc());
        add("QDateTime, milliseconds", noon, noon.addMSecs(1));
        add("QDateTime, offset", noon.toOffsetFromUtc(7200), noon.addSecs(60));
        add("QUrl", QUrl(u"http://a/"_s), QUrl(u"http://b/"_s));
        const QUuid variant0(u"{f0000000-0000-4000-0000-000000000000}"_s);
        add("QUuid, variant first", variant0, QUuid(u"{10000000-0000-4000-8000-000000000000}"_s));
        static const Model model;
        const auto index = [](int row, int column, quintptr id) { return model.createIndex(row, column, id); };
        add("QModelIndex, row", index(0, 1, 1), index(1, 0, 0));
        add("QModelIndex, column", index(0, 0, 1), index(0, 1, 0));
        add("QModelIndex, id", index(0, 0, 1), index(0, 0, ~quintptr(0)));
        add("QModelIndex, model", QModelIndex(), index(-1, -1, 0));
        add("QPersistentModelIndex", QPersistentModelIndex(index(0, 0, 0)), QPersistentModelIndex(index(1, 0, 0)));
    }
    void orders()
    {
        QFETCH(QVariant, lesser);
        QFETCH(QVariant, greater);
        QVERIFY(isLess(lesser, greater));
        QVERIFY(!isLess(greater, lesser));
        QVERIFY(!isLess(lesser, lesser));
    }

    void otherTypes()
    {
        QCOMPARE(isLess(u"10"_s, 9), true); // the left type decides
        QCOMPARE(isLess(9, u"10"_s), true);
        QCOMPARE(isLess(1, 1.4), false);
        QCOMPARE(isLess(-1, QVariant()), true);
        QCOMPARE(isLess(0, QVariant()), false);
        QCOMPARE(isLess(QVariant(), 1), false);
        QCOMPARE(isLess(qQNaN(), 1.0), false);
        QCOMPARE(isLess(1.0, qQNaN()), false);
        QCOMPARE(isLess(1.0f, 2.0f), false);
    }
};

QTEST_GUILESS_MAIN(QVariantLessTest)
#include "tst_qvariantless.moc"

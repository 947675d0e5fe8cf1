#include <qtextensions/QVariantLess.h>

#include <QDateTime>
#include <QStringListModel>
#include <QTest>
#include <QUrl>
#include <QUuid>

#include <string>

using namespace Qt::StringLiterals;

namespace {

class Model : public QStringListModel
{
public:
    using QStringListModel::createIndex;
};

} // namespace

class QVariantLessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void orders_data()
    {
        QTest::addColumn<QVariant>("lesser");
        QTest::addColumn<QVariant>("greater");
        QTest::newRow("bool") << QVariant(false) << QVariant(true);
        QTest::newRow("int") << QVariant(-1) << QVariant(0);
        QTest::newRow("uint") << QVariant(1U) << QVariant(0x80000000U);
        const qint64 large = Q_INT64_C(1) << 53;
        QTest::newRow("qlonglong, no doubles") << QVariant(large) << QVariant(large + 1);
        QTest::newRow("qulonglong") << QVariant(quint64(large)) << QVariant(~quint64(0));
        QTest::newRow("double") << QVariant(1.0) << QVariant(1.0 + 1e-15);
        QTest::newRow("QChar, case") << QVariant(QChar(u'B')) << QVariant(QChar(u'a'));
        QTest::newRow("QChar, unsigned") << QVariant(QChar(u'a')) << QVariant(QChar(u'\uff5e'));
        QTest::newRow("QString, case") << QVariant(u"B"_s) << QVariant(u"a"_s);
        QTest::newRow("QString, no locale") << QVariant(u"z"_s) << QVariant(u"ä"_s);
        QTest::newRow("QString, code units") << QVariant(u"😀"_s) << QVariant(u"～"_s);
        QTest::newRow("QStringList, elements")
            << QVariant(QStringList{u"A"_s, u"b"_s}) << QVariant(QStringList{u"a"_s});
        QTest::newRow("QStringList, prefix") << QVariant(QStringList{u"a"_s}) << QVariant(QStringList{u"a"_s, {}});
        QTest::newRow("QByteArray, NUL") << QVariant(QByteArrayLiteral("a\0a")) << QVariant(QByteArrayLiteral("a\0b"));
        QTest::newRow("QDate, no text") << QVariant(QDate(9999, 1, 1)) << QVariant(QDate(10000, 1, 1));
        QTest::newRow("QTime, milliseconds") << QVariant(QTime(1, 2, 3, 4)) << QVariant(QTime(1, 2, 3, 5));
        const QDateTime noon(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC);
        QTest::newRow("QDateTime, milliseconds") << QVariant(noon) << QVariant(noon.addMSecs(1));
        QTest::newRow("QDateTime, offset") << QVariant(noon.toOffsetFromUtc(7200)) << QVariant(noon.addSecs(60));
        QTest::newRow("QUrl") << QVariant(QUrl(u"http://a/"_s)) << QVariant(QUrl(u"http://b/"_s));
        QTest::newRow("QUuid, variant first") << QVariant(QUuid(u"{f0000000-0000-4000-0000-000000000000}"_s))
                                              << QVariant(QUuid(u"{10000000-0000-4000-8000-000000000000}"_s));
        static const Model model;
        const auto index = [](int row, int column, quintptr id) { return model.createIndex(row, column, id); };
        QTest::newRow("QModelIndex, row") << QVariant(index(0, 1, 1)) << QVariant(index(1, 0, 0));
        QTest::newRow("QModelIndex, column") << QVariant(index(0, 0, 1)) << QVariant(index(0, 1, 0));
        QTest::newRow("QModelIndex, id") << QVariant(index(0, 0, 1)) << QVariant(index(0, 0, ~quintptr(0)));
        QTest::newRow("QModelIndex, model") << QVariant(QModelIndex()) << QVariant(index(-1, -1, 0));
        QTest::newRow("QPersistentModelIndex")
            << QVariant(QPersistentModelIndex(index(0, 0, 0))) << QVariant(QPersistentModelIndex(index(1, 0, 0)));
    }
    void orders()
    {
        QFETCH(QVariant, lesser);
        QFETCH(QVariant, greater);
        const qtextensions::QVariantLess isLess;
        QVERIFY(isLess(lesser, greater));
        QVERIFY(!isLess(greater, lesser));
        QVERIFY(!isLess(lesser, lesser));
    }

    void otherTypes()
    {
        const qtextensions::QVariantLess isLess;
        QCOMPARE(isLess(u"10"_s, 9), true); // the left type decides
        QCOMPARE(isLess(9, u"10"_s), true);
        QCOMPARE(isLess(1, 1.4), false);
        QCOMPARE(isLess(-1, QVariant()), true);
        QCOMPARE(isLess(0, QVariant()), false);
        QCOMPARE(isLess(QVariant(), 1), false);
        QCOMPARE(isLess(qQNaN(), 1.0), false);
        QCOMPARE(isLess(1.0, qQNaN()), false);
        QCOMPARE(isLess(1.0f, 2.0f), false);
        QCOMPARE(isLess(QVariant::fromValue(std::string("a")), QVariant::fromValue(std::string("b"))), false);
    }
};

QTEST_GUILESS_MAIN(QVariantLessTest)
#include "tst_qvariantless.moc"

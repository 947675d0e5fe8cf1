#include <qtextensions/QVariantLess.h>

#include <QTest>
#include <QVariant>

#include <string>

using namespace Qt::StringLiterals;
using qtextensions::QVariantLess;

class QVariantLessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesOfOtherTypes()
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
};

QTEST_GUILESS_MAIN(QVariantLessTest)
#include "tst_qvariantless.moc"

#include "../LogRecorder.h"

#include <foundation/CoreObject.h>

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class Shape : public CoreObject
{
public:
    Shape() { CORE_OBJECT_INIT(u"Shape"_s); }

    const QString getTypeId() const override { return u"Shape"_s; }

    void enter(const QString &typeId) { CORE_OBJECT_INIT(typeId); }
};

class Circle : public Shape
{
public:
    Circle() { CORE_OBJECT_INIT(u"Circle"_s); }
};

} // namespace

class CoreObjectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rootHasNoEntry()
    {
        const CoreObject root;
        QCOMPARE(root.getTypeId(), u"CoreObject"_s);
        QCOMPARE(root.getTypeId().capacity(), 0);
        QVERIFY(!root.isOfType(CoreObject::getClassTypeId()));
    }

    void typesOfAHierarchy()
    {
        const Circle circle;
        QVERIFY(circle.isOfType(u"Shape"_s) && circle.isOfType(u"Circle"_s) && !circle.isOfType(u"circle"_s));
        QVERIFY(circle.isOfAnyType({u"Square"_s, u"Shape"_s}) && circle.isOfAnyType({u"Shape"_s, u"Square"_s}));
        QVERIFY(!circle.isOfAnyType({u"Square"_s, u"CoreObject"_s}) && !circle.isOfAnyType({}));
    }

    void copiesTakeTheListAndKeepTheirType()
    {
        Circle circle;
        CoreObject copy(circle);
        Shape assigned;
        assigned.CoreObject::operator=(circle);
        circle.enter(u"Later"_s);
        assigned.enter(u"Own"_s);
        QCOMPARE(copy.getTypeId() + u'/' + assigned.getTypeId(), u"CoreObject/Shape"_s);
        QCOMPARE(copy.getInheritanceList(), QList<QString>({u"Shape"_s, u"Circle"_s}));
        QCOMPARE(assigned.getInheritanceList(), QList<QString>({u"Shape"_s, u"Circle"_s, u"Own"_s}));
        QCOMPARE(circle.getInheritanceList(), QList<QString>({u"Shape"_s, u"Circle"_s, u"Later"_s}));
    }

    void duplicateIsIgnoredWithAWarning()
    {
        const LogRecorder log;
        Shape copy{Shape()};
        copy.enter(u"shape"_s);
        QVERIFY(log.getLines().isEmpty());
        copy.enter(u"shape"_s);
        QCOMPARE(copy.getInheritanceList(), QList<QString>({u"Shape"_s, u"shape"_s}));
        QCOMPARE(log.getLines(),
            QStringList(u"1 default CoreObject : duplicate class type id detected; ignored:  \"shape\""_s));
    }
};

QTEST_GUILESS_MAIN(CoreObjectTest)
#include "tst_coreobject.moc"

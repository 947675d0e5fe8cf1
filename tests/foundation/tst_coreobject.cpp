#include "../support/LogRecorder.h"

#include <foundation/CoreObject.h>

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class Shape : public CoreObject
{
public:
    Shape() { enter(u"Shape"_s); }

    const QString getTypeId() const override { return u"Shape"_s; }

    void enter(const QString &typeId) { CORE_OBJECT_INIT(typeId); }
};

} // namespace

class CoreObjectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersByItsList()
    {
        const CoreObject root;
        QCOMPARE(root.getTypeId(), u"CoreObject"_s);
        QCOMPARE(root.getTypeId().capacity(), 0);
        QVERIFY(!root.isOfType(CoreObject::getClassTypeId()));

        Shape shape;
        shape.enter(u"Circle"_s);
        QVERIFY(shape.isOfType(u"Shape"_s) && shape.isOfType(u"Circle"_s) && !shape.isOfType(u"circle"_s));
        QVERIFY(shape.isOfAnyType({u"Square"_s, u"Shape"_s}) && shape.isOfAnyType({u"Shape"_s, u"Square"_s}));
        QVERIFY(!shape.isOfAnyType({u"Square"_s, u"CoreObject"_s}) && !shape.isOfAnyType({}));

        const CoreObject copy(shape);
        CoreObject assigned;
        assigned = shape;
        shape.enter(u"Later"_s);
        QCOMPARE(copy.getTypeId() + u'/' + assigned.getTypeId(), u"CoreObject/CoreObject"_s);
        QCOMPARE(copy.getInheritanceList(), QList<QString>({u"Shape"_s, u"Circle"_s}));
        QCOMPARE(assigned.getInheritanceList(), copy.getInheritanceList());
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

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
        Shape shape;
        shape.enter(u"Circle"_s);
        shape.enter(u""_s);
        QVERIFY(shape.isOfType(u"Shape"_s));
        QVERIFY(shape.isOfType(u""_s));
        QVERIFY(!shape.isOfType(u"circle"_s));
        QVERIFY(shape.isOfAnyType({u"Square"_s, u"Circle"_s}));
        QVERIFY(shape.isOfAnyType({u"Circle"_s, u"Square"_s}));
        QVERIFY(!shape.isOfAnyType({u"Square"_s, u"CoreObject"_s}));
        QVERIFY(!shape.isOfAnyType({}));
    }

    void rootHasNoId()
    {
        const CoreObject root;
        QCOMPARE(root.getTypeId(), u"CoreObject"_s);
        QCOMPARE(root.getTypeId().capacity(), 0); // constant text of the library
        QCOMPARE(root.getInheritanceList(), QList<QString>());
        QVERIFY(!root.isOfType(CoreObject::getClassTypeId()));
    }

    void copiesTakeTheList()
    {
        Shape shape;
        CoreObject copy(shape);
        Shape assigned;
        assigned.enter(u"Earlier"_s);
        static_cast<CoreObject &>(assigned) = copy;
        shape.enter(u"Later"_s);
        QCOMPARE(copy.getTypeId(), u"CoreObject"_s);
        QCOMPARE(assigned.getTypeId(), u"Shape"_s);
        QCOMPARE(copy.getInheritanceList(), QList<QString>({u"Shape"_s}));
        QCOMPARE(assigned.getInheritanceList(), QList<QString>({u"Shape"_s}));
    }

    void duplicateIsIgnoredWithAWarning()
    {
        const LogRecorder log;
        Shape copy{Shape()};
        copy.enter(u"shape"_s);
        QVERIFY(log.getLines().isEmpty());
        copy.enter(u"Shape"_s);
        QCOMPARE(copy.getInheritanceList(), QList<QString>({u"Shape"_s, u"shape"_s}));
        QCOMPARE(log.getLines(),
            QStringList(u"1 default CoreObject : duplicate class type id detected; ignored:  \"Shape\""_s));
    }
};

QTEST_GUILESS_MAIN(CoreObjectTest)
#include "tst_coreobject.moc"

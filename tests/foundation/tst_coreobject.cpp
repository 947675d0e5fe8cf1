#include "../support/LogRecorder.h"

#include <foundation/CoreObject.h>

#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;
using Ids = QList<QString>;

namespace {

class Shape : public CoreObject
{
public:
    using CoreObject::CORE_OBJECT_INIT;

    Shape() { CORE_OBJECT_INIT(u"Shape"_s); }

    const QString getTypeId() const override { return u"Shape"_s; }
};

} // namespace

class CoreObjectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersByItsList()
    {
        Shape shape;
        shape.CORE_OBJECT_INIT(u"Circle"_s);
        shape.CORE_OBJECT_INIT(u""_s);
        QCOMPARE(shape.isOfType(u"Shape"_s), true);
        QCOMPARE(shape.isOfType(u""_s), true);
        QCOMPARE(shape.isOfType(u"circle"_s), false);
        QCOMPARE(shape.isOfAnyType({u"Square"_s, u"Circle"_s}), true);
        QCOMPARE(shape.isOfAnyType({u"Circle"_s, u"Square"_s}), true);
        QCOMPARE(shape.isOfAnyType({u"Square"_s, u"CoreObject"_s}), false);
        QCOMPARE(shape.isOfAnyType({}), false);
    }

    void rootHasNoId()
    {
        const CoreObject root;
        QCOMPARE(root.getTypeId(), u"CoreObject"_s);
        QCOMPARE(root.getTypeId().capacity(), 0); // constant text of the library
        QCOMPARE(root.getInheritanceList(), Ids());
    }

    void copiesTakeTheList()
    {
        Shape shape;
        CoreObject copy(std::move(shape)); // there is no move
        QCOMPARE(shape.getInheritanceList(), Ids({u"Shape"_s}));
        Shape assigned;
        assigned.CORE_OBJECT_INIT(u"Earlier"_s);
        static_cast<CoreObject &>(assigned) = copy;
        shape.CORE_OBJECT_INIT(u"Later"_s);
        QCOMPARE(copy.getInheritanceList(), Ids({u"Shape"_s}));
        QCOMPARE(assigned.getInheritanceList(), Ids({u"Shape"_s}));
    }

    void duplicateIsIgnoredWithAWarning()
    {
        const LogRecorder log;
        Shape copy{Shape()};
        copy.CORE_OBJECT_INIT(u"shape"_s);
        copy.CORE_OBJECT_INIT(u"Shape"_s);
        QCOMPARE(copy.getInheritanceList(), Ids({u"Shape"_s, u"shape"_s}));
        QCOMPARE(log.getLines(), {u"1 default CoreObject : duplicate class type id detected; ignored:  \"Shape\""_s});
    }
};

QTEST_GUILESS_MAIN(CoreObjectTest)
#include "tst_coreobject.moc"

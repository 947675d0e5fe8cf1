#include <foundation/Optional.h>

#include <QMap>
#include <QTest>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;
using utility::Optional;

namespace {

/** Counts its living instances; a negative number cannot be copied. */
struct Counted
{
    static inline int alive = 0;
    static inline int constructed = 0;

    explicit Counted(int number)
        : number(number)
    {
        count();
    }

    Counted(const Counted &source)
        : number(source.number)
    {
        if (number < 0) {
            throw std::runtime_error("not to be copied");
        }
        count();
    }

    Counted(Counted &&source)
        : number(std::exchange(source.number, 0))
    {
        count();
    }

    ~Counted() { --alive; }

    Counted &operator=(const Counted &source)
    {
        if (source.number < 0) {
            throw std::runtime_error("not to be copied");
        }
        number = source.number;
        return *this;
    }

    Counted &operator=(Counted &&source)
    {
        number = std::exchange(source.number, 0);
        return *this;
    }

    static void count()
    {
        ++alive;
        ++constructed;
    }

    int number;
};

struct alignas(64) OverAligned
{
    double value;
};

static_assert(sizeof(Optional<char>) == 2 * sizeof(void *) && alignof(Optional<OverAligned>) == 64);
static_assert(!QTypeInfo<Optional<int>>::isRelocatable && !std::is_trivially_copyable_v<Optional<int>>);
static_assert(std::is_nothrow_move_constructible_v<Optional<QString>>);
static_assert(std::is_nothrow_move_assignable_v<Optional<QString>>);
static_assert(!std::is_nothrow_move_constructible_v<Optional<Counted>>);

template <typename T>
bool pointsToItself(const Optional<T> &optional)
{
    return static_cast<const void *>(&optional.getValue()) == static_cast<const void *>(&optional);
}

Optional<Counted> collect(int number)
{
    Optional<Counted> result;
    if (number == 0) {
        return result;
    }
    const Counted value(number);
    result = value;
    return result;
}

} // namespace

class OptionalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { Counted::constructed = 0; }

    void cleanup() { QCOMPARE(Counted::alive, 0); }

    void emptyIsToldByThePointer()
    {
        const Optional<QtMsgType> empty;
        QVERIFY(!empty.hasValue());
        QVERIFY(!Optional<QtMsgType>(empty).hasValue());
        QVERIFY(!Optional<QtMsgType>(Optional<QtMsgType>()).hasValue());

        const Optional<QtMsgType> zero = QtDebugMsg;
        QVERIFY(zero.hasValue());
        QCOMPARE(zero.getValue(), QtDebugMsg);
        QVERIFY(!collect(0).hasValue());
    }

    void copyHasItsOwnValue()
    {
        Optional<QMap<QString, int>> source = QMap<QString, int>{{u"a"_s, 1}};
        Optional<QMap<QString, int>> copy(source);
        copy.getValue().insert(u"b"_s, 2);
        QVERIFY(pointsToItself(source));
        QVERIFY(pointsToItself(copy));
        QCOMPARE(source.getValue().size(), 1);
        QCOMPARE(copy.getValue().size(), 2);
    }

    void moveLeavesTheSourceWithItsValue()
    {
        Optional<Counted> source(Counted(7));
        Optional<Counted> target(std::move(source));
        QVERIFY(pointsToItself(target));
        QCOMPARE(target.getValue().number, 7);
        QVERIFY(source.hasValue());
        QCOMPARE(source.getValue().number, 0);

        const Optional<Counted> returned = collect(9);
        QVERIFY(pointsToItself(returned));
        QCOMPARE(returned.getValue().number, 9);
    }

    void valueIsAssignedOverValue()
    {
        const Counted first(1);
        const Counted second(2);
        Optional<Counted> optional;
        optional = first;
        optional = second;
        QCOMPARE(optional.getValue().number, 2);
        QCOMPARE(Counted::constructed, 3);
        optional = std::as_const(optional.getValue());
        QCOMPARE(optional.getValue().number, 2);
    }

    void assignmentOfOptionals_data()
    {
        QTest::addColumn<int>("target");
        QTest::addColumn<int>("source");
        QTest::newRow("empty to empty") << 0 << 0;
        QTest::newRow("empty to value") << 1 << 0;
        QTest::newRow("value to empty") << 0 << 2;
        QTest::newRow("value to value") << 1 << 2;
    }

    void assignmentOfOptionals()
    {
        QFETCH(int, target);
        QFETCH(int, source);
        Optional<Counted> from = collect(source);
        Optional<Counted> copied = collect(target);
        copied = from;
        QCOMPARE(copied.hasValue() ? copied.getValue().number : 0, source);
        QCOMPARE(from.hasValue() ? from.getValue().number : 0, source);

        Optional<Counted> moved = collect(target);
        moved = std::move(from);
        QCOMPARE(moved.hasValue() ? moved.getValue().number : 0, source);
        QCOMPARE(from.hasValue(), source != 0);
        QVERIFY(!moved.hasValue() || (pointsToItself(moved) && pointsToItself(copied)));
    }

    void assignmentToItselfKeepsTheValue()
    {
        Optional<Counted> optional(Counted(3));
        Optional<Counted> &itself = optional;
        optional = itself;
        optional = std::move(itself);
        QCOMPARE(optional.getValue().number, 3);
        Optional<Counted> empty;
        Optional<Counted> &emptyItself = empty;
        empty = std::move(emptyItself);
        QVERIFY(!empty.hasValue());
    }

    void throwingConstructorLeavesItEmpty()
    {
        const Counted forbidden(-1);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, Optional<Counted>{forbidden});
        Optional<Counted> optional;
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, optional = forbidden);
        QVERIFY(!optional.hasValue());
        const Optional<Counted> source(Counted(-1));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, optional = source);
        QVERIFY(!optional.hasValue());
        optional = Counted(4);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, optional = forbidden);
        QCOMPARE(optional.getValue().number, 4);
    }

    void heldInContainers()
    {
        // A list that relocated its elements by their bytes would leave pointers into freed memory.
        QList<Optional<QString>> list;
        for (int i = 0; i < 100; ++i) {
            list.prepend(i % 3 == 0 ? Optional<QString>() : Optional<QString>(QString::number(i)));
        }
        for (int i = 0; i < 100; ++i) {
            const Optional<QString> &element = list.at(99 - i);
            QCOMPARE(element.hasValue(), i % 3 != 0);
            QVERIFY(!element.hasValue() || pointsToItself(element));
            QCOMPARE(element.hasValue() ? element.getValue() : QString::number(i), QString::number(i));
        }

        const auto overAligned = std::make_unique<Optional<OverAligned>>(OverAligned{1.5});
        QCOMPARE(reinterpret_cast<quintptr>(&overAligned->getValue()) % 64, quintptr(0));
        Optional<std::unique_ptr<int>> moveOnly(std::make_unique<int>(5));
        moveOnly = Optional<std::unique_ptr<int>>(std::make_unique<int>(6));
        QCOMPARE(*moveOnly.getValue(), 6);
    }
};

QTEST_GUILESS_MAIN(OptionalTest)
#include "tst_optional.moc"

#include <foundation/Optional.h>

#include <QTest>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;
using utility::Optional;

namespace {

/** Counts its living instances; has no default constructor, and a copy of a negative number throws. */
struct Counted
{
    explicit Counted(int number)
        : number(number)
    {
        ++alive;
    }

    Counted(const Counted &source)
        : number(source.number < 0 ? throw std::runtime_error("not to be copied") : source.number)
    {
        ++alive;
    }

    Counted &operator=(const Counted &source) = default;

    ~Counted() { --alive; }

    static inline int alive = 0;
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

/** Returns an empty Optional for 0. */
Optional<Counted> collect(int number)
{
    Optional<Counted> result;
    if (number != 0) {
        const Counted value(number);
        result = value;
    }
    return result;
}

int numberOf(const Optional<Counted> &optional)
{
    return optional.hasValue() && pointsToItself(optional) ? optional.getValue().number : 0;
}

} // namespace

class OptionalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { QCOMPARE(Counted::alive, 0); }

    void absenceIsToldByThePointer()
    {
        const Optional<QtMsgType> zero = QtDebugMsg;
        QVERIFY(zero.hasValue());
        QCOMPARE(zero.getValue(), QtDebugMsg);
        QVERIFY(!Optional<QtMsgType>().hasValue());
    }

    void copyAndMove_data()
    {
        QTest::addColumn<int>("target");
        QTest::addColumn<int>("source");
        QTest::newRow("empty over empty") << 0 << 0;
        QTest::newRow("empty over value") << 1 << 0;
        QTest::newRow("value over empty") << 0 << 2;
        QTest::newRow("value over value") << 1 << 2;
    }

    void copyAndMove()
    {
        QFETCH(int, target);
        QFETCH(int, source);
        Optional<Counted> from = collect(source);
        Optional<Counted> copied = collect(target);
        copied = from;
        QCOMPARE(numberOf(copied), source);
        Optional<Counted> moved = collect(target);
        moved = std::move(from);
        QCOMPARE(numberOf(moved), source);
        QCOMPARE(numberOf(from), source); // keeps its moved-from value
        QCOMPARE(numberOf(Optional<Counted>(copied)), source);
        QCOMPARE(numberOf(Optional<Counted>(std::move(copied))), source);

        Optional<Counted> &itself = moved;
        moved = itself;
        moved = std::move(itself);
        QCOMPARE(numberOf(moved), source);
        QCOMPARE(Counted::alive, source == 0 ? 0 : 3);
    }

    void movesTheValueItself()
    {
        Optional<std::unique_ptr<int>> source(std::make_unique<int>(5));
        Optional<std::unique_ptr<int>> target(std::move(source));
        QCOMPARE(*target.getValue(), 5);
        QVERIFY(source.hasValue() && source.getValue() == nullptr);
        source = std::move(target);
        QCOMPARE(*source.getValue(), 5);
    }

    void valueIsAssignedOverValue()
    {
        Optional<Counted> optional(Counted(1));
        const Counted *const place = &optional.getValue();
        optional = Counted(2);
        optional = *place;
        QCOMPARE(&optional.getValue(), place);
        QCOMPARE(numberOf(optional), 2);
        QCOMPARE(Counted::alive, 1);
    }

    void throwingConstructorLeavesItEmpty()
    {
        const Counted forbidden(-1);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, Optional<Counted>{forbidden});
        Optional<Counted> optional;
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, optional = forbidden);
        QVERIFY(!optional.hasValue());
    }

    void survivesContainersAndAlignment()
    {
        // A list that relocated its elements by their bytes would leave pointers into freed memory.
        QList<Optional<QString>> list;
        for (int i = 0; i < 100; ++i) {
            list.prepend(QString::number(i));
        }
        for (int i = 0; i < 100; ++i) {
            QVERIFY(pointsToItself(list.at(i)));
            QCOMPARE(list.at(i).getValue(), QString::number(99 - i));
        }
        const auto overAligned = std::make_unique<Optional<OverAligned>>(OverAligned{1.5});
        QCOMPARE(reinterpret_cast<quintptr>(&overAligned->getValue()) % 64, quintptr(0));
    }
};

QTEST_GUILESS_MAIN(OptionalTest)
#include "tst_optional.moc"

#include <foundation/Optional.h>

#include <QTest>

#include <memory>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
using utility::Optional;
using Shared = std::shared_ptr<int>; // counts its living copies, and is null once moved from
using Numbers = std::vector<int>;

namespace {

// Over-aligned, without a default constructor; it cannot be copied.
struct alignas(64) Demanding
{
    explicit Demanding(int) { }
    Demanding(const Demanding &) { throw std::runtime_error("copied"); }
    Demanding &operator=(const Demanding &) = default;
};

static_assert(sizeof(Optional<char>) == 2 * sizeof(void *) && alignof(Optional<Demanding>) == 64);
static_assert(!QTypeInfo<Optional<int>>::isRelocatable && !std::is_trivially_copyable_v<Optional<int>>);
static_assert(std::is_nothrow_move_constructible_v<Optional<Shared>>);
static_assert(!std::is_nothrow_move_constructible_v<Optional<Demanding>>);

// Shows the number that is held.
QString show(const Optional<Shared> &optional)
{
    return !optional.hasValue() ? u"nothing"_s
        : !optional.getValue()  ? u"moved-from"_s
                                : QString::number(*optional.getValue());
}

} // namespace

class OptionalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesAndMoves()
    {
        const Shared one = std::make_shared<int>(1);
        const Shared two = std::make_shared<int>(2);
        for (const Optional<Shared> &target : {Optional<Shared>(), Optional<Shared>(one)}) {
            for (const Optional<Shared> &source : {Optional<Shared>(), Optional<Shared>(two)}) {
                const QString expected = source.hasValue() ? u"2"_s : u"nothing"_s;
                const QString expectedSource = source.hasValue() ? u"moved-from"_s : u"nothing"_s;
                Optional<Shared> copied(target);
                copied = source;
                QCOMPARE(show(source), expected);
                QCOMPARE(show(copied), expected);
                Optional<Shared> moved(target);
                moved = std::move(copied);
                QCOMPARE(show(copied), expectedSource);
                const Optional<Shared> moveConstructed(std::move(moved));
                QCOMPARE(show(moveConstructed), expected);
                QCOMPARE(show(moved), expectedSource);
            }
        }
        QCOMPARE(one.use_count(), 1);
        QCOMPARE(two.use_count(), 1);
    }

    void assignmentKeepsTheObject()
    {
        Optional<Numbers> optional;
        optional = Numbers{1, 2, 3};
        optional = Numbers{4};
        QCOMPARE(optional.getValue(), Numbers{4});
        const Optional<Numbers> other(Numbers{5, 6});
        optional = other;
        QCOMPARE(optional.getValue(), Numbers({5, 6}));
        QCOMPARE(optional.getValue().capacity(), 3U); // a vector made anew has no more than it needs
    }

    void assignmentToItselfKeepsTheValue()
    {
        Optional<Numbers> optional(Numbers{1}); // a vector moved onto itself is emptied
        Optional<Numbers> &same = optional; // compilers warn about an obvious self-assignment
        optional = same;
        optional = std::move(same);
        QCOMPARE(optional.getValue(), Numbers{1});
    }

    void zeroIsAValue() { QVERIFY(Optional<QtMsgType>(QtDebugMsg).hasValue()); }

    void throwingConstructorLeavesItEmpty()
    {
        Optional<Demanding> optional;
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, optional = Demanding(0));
        QVERIFY(!optional.hasValue());
    }
};

QTEST_GUILESS_MAIN(OptionalTest)
#include "tst_optional.moc"

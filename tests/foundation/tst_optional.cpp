#include <foundation/Optional.h>

#include <QTest>

#include <memory>
#include <stdexcept>
#include <vector>

using utility::Optional;
using Shared = std::shared_ptr<int>; // counts its living copies, and is null once moved from

namespace {

/** Over-aligned, without a default constructor; a copy throws unless the number is positive. */
struct alignas(64) Demanding
{
    explicit Demanding(int number)
        : number(number)
    {
    }

    Demanding(const Demanding &source)
        : Demanding(source.number > 0 ? source.number : throw std::runtime_error("not to be copied"))
    {
    }

    Demanding &operator=(const Demanding &source) = default;

    int number;
};

static_assert(sizeof(Optional<char>) == 2 * sizeof(void *) && alignof(Optional<Demanding>) == 64);
static_assert(!QTypeInfo<Optional<int>>::isRelocatable && !std::is_trivially_copyable_v<Optional<int>>);
static_assert(std::is_nothrow_move_constructible_v<Optional<Shared>>);
static_assert(!std::is_nothrow_move_constructible_v<Optional<Demanding>>);

Optional<Shared> make(const Shared &value)
{
    Optional<Shared> result;
    if (value != nullptr) {
        result = value;
    }
    return result;
}

/** Tells whether @p optional holds @p value, or nothing if that is null. */
bool holds(const Optional<Shared> &optional, const Shared &value)
{
    return optional.hasValue() ? value != nullptr && optional.getValue() == value : value == nullptr;
}

} // namespace

class OptionalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesAndMoves()
    {
        QVERIFY(Optional<QtMsgType>(QtDebugMsg).hasValue());
        const Shared one = std::make_shared<int>(1);
        const Shared two = std::make_shared<int>(2);
        for (const auto &[target, source] : {std::pair(Shared(), Shared()), {one, {}}, {{}, two}, {one, two}}) {
            const long copiesBefore = source.use_count();
            Optional<Shared> from = make(source);
            Optional<Shared> copied = make(target);
            copied = from;
            Optional<Shared> moved = make(target);
            moved = std::move(from);
            QVERIFY(source != nullptr ? from.hasValue() && from.getValue() == nullptr : !from.hasValue());
            const Optional<Shared> constructed(copied);
            const Optional<Shared> moveConstructed(std::move(copied));
            QVERIFY(holds(moved, source) && holds(constructed, source) && holds(moveConstructed, source));
            QCOMPARE(source.use_count(), source != nullptr ? copiesBefore + 3 : 0);
        }
        QCOMPARE(one.use_count() + two.use_count(), 2);
    }

    void assignmentToItselfKeepsTheValue()
    {
        Optional<std::vector<int>> optional(std::vector<int>{1}); // a vector moved onto itself is emptied
        Optional<std::vector<int>> &same = optional; // compilers warn of what they see through
        optional = same;
        optional = std::move(same);
        QCOMPARE(optional.getValue(), std::vector<int>{1});
    }

    void throwingConstructorLeavesItEmpty()
    {
        Optional<Demanding> optional;
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, optional = Demanding(0));
        QVERIFY(!optional.hasValue());
    }
};

QTEST_GUILESS_MAIN(OptionalTest)
#include "tst_optional.moc"

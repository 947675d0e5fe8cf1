#include <foundation/Optional.h>

#include <QTest>

#include <memory>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
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

    Demanding &operator=(const Demanding &source)
    {
        number = 10 * source.number;
        return *this;
    }

    int number;
};

static_assert(sizeof(Optional<char>) == 2 * sizeof(void *) && alignof(Optional<Demanding>) == 64);
static_assert(!QTypeInfo<Optional<int>>::isRelocatable && !std::is_trivially_copyable_v<Optional<int>>);
static_assert(std::is_nothrow_move_constructible_v<Optional<Shared>>);
static_assert(!std::is_nothrow_move_constructible_v<Optional<Demanding>>);

Optional<Shared> make(const Shared &value)
{
    return value ? Optional<Shared>(value) : Optional<Shared>();
}

/** Shows the number that is held. */
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
        for (const auto &[target, source] : {std::pair(Shared(), Shared()), {one, {}}, {{}, two}, {one, two}}) {
            const QString expected = source ? u"2"_s : u"nothing"_s;
            const QString expectedRest = source ? u"moved-from"_s : u"nothing"_s;
            const Optional<Shared> from = make(source);
            Optional<Shared> copied = make(target);
            copied = from;
            QCOMPARE(show(from), expected);
            const Optional<Shared> constructed(copied);
            QCOMPARE(show(constructed), expected);
            Optional<Shared> moved = make(target);
            moved = std::move(copied);
            QCOMPARE(show(copied), expectedRest);
            const Optional<Shared> moveConstructed(std::move(moved));
            QCOMPARE(show(moveConstructed), expected);
            QCOMPARE(show(moved), expectedRest);
        }
        QCOMPARE(one.use_count(), 1);
        QCOMPARE(two.use_count(), 1);
    }

    void assignsOverAValue()
    {
        Optional<Demanding> optional;
        optional = Demanding(1);
        QCOMPARE(optional.getValue().number, 1); // constructed
        optional = Demanding(2);
        QCOMPARE(optional.getValue().number, 20); // assigned, not rebuilt
        const Optional<Demanding> other(Demanding(3));
        optional = other;
        QCOMPARE(optional.getValue().number, 30);
    }

    void assignmentToItselfKeepsTheValue()
    {
        Optional<std::vector<int>> optional(std::vector<int>{1}); // a vector moved onto itself is emptied
        Optional<std::vector<int>> &same = optional; // compilers warn of what they see through
        optional = same;
        optional = std::move(same);
        QCOMPARE(optional.getValue(), std::vector<int>{1});
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

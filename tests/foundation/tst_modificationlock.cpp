#include <foundation/ModificationLock.h>

#include <QTest>

#include <memory>
#include <thread>
#include <vector>

using utility::ModificationLock;

static_assert(!std::is_copy_constructible_v<ModificationLock> && !std::is_move_constructible_v<ModificationLock>);
static_assert(!std::is_copy_assignable_v<ModificationLock> && !std::is_move_assignable_v<ModificationLock>);

class ModificationLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup()
    {
        QVERIFY(!ModificationLock::isLocked(ModificationLock::Data));
        QVERIFY(!ModificationLock::isLocked(ModificationLock::View));
    }

    void locksNestForEachTypeApart()
    {
        for (const auto type : {ModificationLock::Data, ModificationLock::View}) {
            const auto other = ModificationLock::LockType(1 - type);
            auto outer = std::make_unique<ModificationLock>(type);
            {
                const ModificationLock inner(type);
                outer.reset();
                QVERIFY(ModificationLock::isLocked(type));
                QVERIFY(!ModificationLock::isLocked(other));
            }
            QVERIFY(!ModificationLock::isLocked(type));
        }
    }

    void countsFromManyThreads()
    {
        // Each thread drops locks that another one made, and sees the type locked as long as the outer lock lives.
        std::atomic<int> unlockedSeen = 0;
        {
            const ModificationLock outer(ModificationLock::View);
            std::vector<std::unique_ptr<ModificationLock>> handedOver;
            for (int i = 0; i < 4; ++i) {
                handedOver.push_back(std::make_unique<ModificationLock>(ModificationLock::Data));
            }
            std::vector<std::thread> threads;
            for (auto &lock : handedOver) {
                threads.emplace_back([&unlockedSeen, lock = std::move(lock)]() mutable {
                    for (int i = 0; i < 20'000; ++i) {
                        const ModificationLock own(ModificationLock::View);
                        lock = std::make_unique<ModificationLock>(ModificationLock::Data);
                        unlockedSeen += !ModificationLock::isLocked(ModificationLock::Data);
                    }
                    unlockedSeen += !ModificationLock::isLocked(ModificationLock::View);
                    lock.reset();
                });
            }
            for (std::thread &thread : threads) {
                thread.join();
            }
            QVERIFY(ModificationLock::isLocked(ModificationLock::View));
        }
        QCOMPARE(unlockedSeen.load(), 0);
    }
};

QTEST_GUILESS_MAIN(ModificationLockTest)
#include "tst_modificationlock.moc"

#include <foundation/ModificationLock.h>

#include <QTest>

#include <memory>
#include <thread>
#include <vector>

using utility::ModificationLock;

static_assert(!std::is_move_constructible_v<ModificationLock> && !std::is_move_assignable_v<ModificationLock>);

class ModificationLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void locksOverlapForEachTypeApart()
    {
        for (const auto type : {ModificationLock::Data, ModificationLock::View}) {
            auto first = std::make_unique<ModificationLock>(type);
            {
                const ModificationLock second(type);
                first.reset();
                QVERIFY(ModificationLock::isLocked(type));
                QVERIFY(!ModificationLock::isLocked(ModificationLock::LockType(1 - type)));
            }
            QVERIFY(!ModificationLock::isLocked(type));
        }
    }

    void countsFromManyThreads()
    {
        // Each thread starts with a lock that was made on another one, and always holds one.
        std::atomic<int> unlockedSeen = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&unlockedSeen, lock = std::make_unique<ModificationLock>(ModificationLock::Data)] {
                for (int j = 0; j < 200'000; ++j) {
                    const ModificationLock own(ModificationLock::Data);
                    unlockedSeen += !ModificationLock::isLocked(ModificationLock::Data);
                }
            });
        }
        for (std::thread &thread : threads) {
            thread.join();
        }
        QCOMPARE(unlockedSeen.load(), 0);
        QVERIFY(!ModificationLock::isLocked(ModificationLock::Data));
    }
};

QTEST_GUILESS_MAIN(ModificationLockTest)
#include "tst_modificationlock.moc"

#include <foundation/ModificationLock.h>

#include <QTest>

#include <memory>
#include <thread>
#include <vector>

using utility::ModificationLock;

static_assert(ModificationLock::Data == 0 && ModificationLock::View == 1);
static_assert(!std::is_move_constructible_v<ModificationLock> && !std::is_move_assignable_v<ModificationLock>);

class ModificationLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsFromManyThreadsForEachTypeApart()
    {
        for (const auto type : {ModificationLock::Data, ModificationLock::View}) {
            // Each thread destroys a lock of another thread and asks while it has one of its own.
            std::atomic<int> failures = 0;
            std::vector<std::thread> threads;
            for (int i = 0; i < 4; ++i) {
                threads.emplace_back([type, &failures, first = std::make_unique<ModificationLock>(type)]() mutable {
                    for (int j = 0; j < 300'000; ++j) {
                        const ModificationLock second(type);
                        first.reset();
                        failures += !ModificationLock::isLocked(type);
                        failures += ModificationLock::isLocked(ModificationLock::LockType(1 - type));
                    }
                });
            }
            for (std::thread &thread : threads) {
                thread.join();
            }
            QCOMPARE(failures.load(), 0);
            QVERIFY(!ModificationLock::isLocked(type));
        }
    }
};

QTEST_GUILESS_MAIN(ModificationLockTest)
#include "tst_modificationlock.moc"

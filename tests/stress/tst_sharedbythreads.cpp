#include <logging/CategoriesRegistry.h>
#include <numerics/BaseConverter.h>
#include <strings/NaturalSort.h>

#include <QSemaphore>
#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

/** What the whole process shares, from the first call on. */
class SharedByThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesTheSameOnEachThread()
    {
        std::atomic<logging::CategoriesRegistry *> registry = nullptr;
        std::atomic<int> failures = 0;
        QSemaphore go;
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&] {
                go.acquire();
                for (int round = 0; round < 10000; ++round) {
                    logging::CategoriesRegistry *const here = &logging::CategoriesRegistrySingleton::getInstance();
                    logging::CategoriesRegistry *const elsewhere = registry.exchange(here);
                    failures += (elsewhere && elsewhere != here) || !holds();
                }
            });
        }
        go.release(4);
        for (std::thread &thread : threads) {
            thread.join();
        }
        QCOMPARE(failures, 0);
    }

private:
    static bool holds()
    {
        QList<QString> list = {u"b"_s, u"a"_s};
        NaturalSort::sort(list);
        return list.first() == u"a" && BaseConverter::getHexToDecimalConverter().convert(u"FF"_s) == u"255"
            && BaseConverter::getDecimalToHexConverter().convert(u"255"_s) == u"FF"
            && BaseConverter::getBinaryToDecimalConverter().convert(u"101"_s) == u"5"
            && BaseConverter::getDecimalToBinaryConverter().convert(u"5"_s) == u"101";
    }
};

QTEST_GUILESS_MAIN(SharedByThreadsTest)
#include "tst_sharedbythreads.moc"

// A load test for the number of seconds given: several threads add, cancel, pause, answer and restart, and each command
// accounts for its signals when it is destroyed. Fails where a command does not end exactly once, a signal is missing
// or doubled, nothing moves any more, or the memory grows.
//
// Many times a second the producers wait until all commands are gone: only then would a lost wake-up show, since the
// next add would make up for it. Every ten seconds two threads stop the worker, and another takes its place.

#include "../support/TestCommand.h"

#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QFile>

#include <array>
#include <random>

using namespace Qt::StringLiterals;

namespace {
constexpr unsigned producerCount = 4;
constexpr int generationSeconds = 10;
constexpr int timeoutSeconds = 30; // without a command's end
constexpr std::size_t outstandingPerProducer = 128;
constexpr qint64 undeliveredAtMost = 1'000; // signals on their way to the main thread

std::atomic<qint64> made;
std::atomic<qint64> gone;

// The worker may go on while a producer answers; what a slot on the producer's thread then sees is not its own change.
thread_local bool answering = false;

void require(bool condition, const char *what, const CommandData *data = nullptr)
{
    if (!condition) {
        const QString which = data ? data->getReference() + u' ' + data->getStatusAsString() : u"soak"_s;
        qFatal("%s: %s", qPrintable(which), what);
    }
}

/** A record that slots count on the threads that emit. */
struct SoakData : public TestData
{
    using TestData::TestData;

    std::atomic<int> added = 0;
    std::atomic<int> removed = 0;
    std::atomic<int> announced = 0; // by awaitingUserAction
    std::atomic<int> processings = 0;
    std::atomic<int> errors = 0;
    std::atomic<int> ends = 0;
};

SoakData &soakData(CommandData *data)
{
    return static_cast<SoakData &>(*data);
}

enum Kind { Working = 507, Repeating, Failing, Gated, Asking, kindCount }; // those below finish at once

class SoakCommand : public Command
{
public:
    SoakCommand(const QString &reference, unsigned kind)
        : Command(nullptr)
        , kind(kind)
        , data(reference)
        , startable(kind != Gated)
    {
        ++made;
        QObject::connect(
            &data, &CommandData::statusChanged, &data, [this] { count(); }, Qt::DirectConnection);
        if (kind == Asking) {
            data.setStatus(CommandData::REQUIRE_USER_ACTION);
        }
    }
    ~SoakCommand() override
    {
        const CommandData::Status status = data.getStatus();
        require(data.added == 1, "added other than once", &data);
        require(data.removed == 1, "removed other than once", &data);
        require(data.ends == int(status != CommandData::ERR), "ended other than once", &data);
        require(data.errors == int(kind == Failing && executions > 0), "in error other than once", &data);
        require(data.processings == executions, "executed without the status", &data);
        require(executions > 0 || status == CommandData::CANCELLED, "ended without execution", &data);
        require(kind != Asking || data.announced > 0 || executions == 0, "executed without the answer", &data);
        ++gone;
    }

    bool canBeStarted() const override { return startable; }
    bool isFinished() override { return finished; }
    CommandData *getCommandData() override { return &data; }

    const unsigned kind;
    SoakData data;
    std::atomic<bool> startable;
    int answered = 0; // the producer's

protected:
    void handleExecute() override
    {
        ++executions;
        finished = kind != Working && (kind != Repeating || executions == 3);
        for (int step = 0; !finished && kind == Working && !isCancelled() && !isPaused(); ++step) {
            finished = step == 1000;
        }
        if (kind == Failing) {
            setError(4);
        }
    }

private:
    void count()
    {
        if (!answering) {
            const CommandData::Status status = data.getStatus();
            data.processings += status == CommandData::PROCESSING;
            data.errors += status == CommandData::ERR;
            data.ends += status == CommandData::FINISHED || status == CommandData::CANCELLED;
        }
    }

    bool finished = true; // the worker's, as is the next
    int executions = 0;
};

/** A worker and its producers. */
class Generation
{
public:
    explicit Generation(unsigned seed)
    {
        follow(&CommandQueue::commandAdded,
            [](const QSharedPointer<Command> &command) { ++soakData(command->getCommandData()).added; });
        follow(&CommandQueue::commandRemoved, [](CommandData *data) { ++soakData(data).removed; });
        follow(&CommandQueue::awaitingUserAction, [](CommandData *data) { ++soakData(data).announced; });
        follow(&CommandQueue::commandStarted,
            [this](CommandData *data) { require(!std::exchange(running, data), "a run within a run", data); });
        follow(&CommandQueue::commandFinished, [this](CommandData *data) {
            require(std::exchange(running, nullptr) == data, "the end of another run", data);
        });
        QObject::connect(
            &queue, &CommandQueue::commandAdded, &queue, [this] { ++delivered; }, Qt::QueuedConnection);
        worker.start();
        for (unsigned producer = 0; producer < producerCount; ++producer) {
            producers.emplace_back([this, producer, seed] { produce(producer, seed * producerCount + producer + 1); });
        }
    }
    ~Generation()
    {
        over = true;
        for (std::thread &producer : producers) {
            producer.join();
        }
        std::thread other([this] { worker.stop(); });
        worker.stop();
        other.join();
        require(worker.wait(1000 * timeoutSeconds), "the worker does not end");
        require(queue.getCommands().isEmpty() && !queue.isProcessing() && !running, "something left after stop()");
        QCoreApplication::sendPostedEvents();
        require(delivered == added, "queued signals missing or doubled");
        require(made == gone, "commands left");
    }

    /** Lets the producers work or, the next time, wait until all their commands are gone. */
    void alternate() { quiet = !quiet || made != gone; }

private:
    template <typename Signal, typename Slot>
    void follow(Signal signal, Slot slot)
    {
        QObject::connect(&queue, signal, &queue, slot, Qt::DirectConnection);
    }

    void produce(unsigned producer, unsigned seed)
    {
        std::minstd_rand random(seed);
        std::vector<QSharedPointer<SoakCommand>> own;
        bool pausing = false; // this producer owes a restart
        while (!over) {
            if (!quiet && own.size() < outstandingPerProducer && added - delivered < undeliveredAtMost) {
                const QString reference = QString::number(numbers[producer]++);
                own.push_back(QSharedPointer<SoakCommand>::create(reference, unsigned(random() % kindCount)));
                ++added;
                queue.addCommand(own.back());
                if (random() % 16 == 0) {
                    const qint64 latest = numbers[random() % producerCount];
                    queue.cancelCommandByReference(QString::number(latest - qint64(random() % 128)));
                }
                if (random() % 128 == 0) {
                    pausing = true;
                    queue.pause();
                }
            } else {
                for (std::size_t index = own.size(); index > 0; --index) {
                    attend(own, index - 1, random() % 4 == 0);
                }
                std::this_thread::sleep_for(std::chrono::microseconds(50)); // leaves the processor to the worker
            }
            if (pausing && random() % 2 == 0) {
                pausing = false;
                worker.restart();
            }
        }
    }

    /** Releases a command that has ended, and does what another waits for. */
    void attend(std::vector<QSharedPointer<SoakCommand>> &own, std::size_t index, bool cancels)
    {
        SoakCommand &command = *own[index];
        if (command.data.removed > 0) {
            std::swap(own[index], own.back());
            own.pop_back();
        } else if (command.kind == Gated && !command.startable) {
            if (cancels) {
                return queue.cancelCommand(own[index]);
            }
            command.startable = true;
            Q_EMIT queue.finishCommandAllowed(true);
        } else if (command.data.announced > command.answered) {
            if (command.answered++ == 0) {
                answering = true;
                command.data.setStatus(CommandData::QUEUEING);
                answering = false;
            }
            worker.restart();
        }
    }

    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();
    CommandData *running = nullptr; // the worker's, and after its end the main thread's
    std::atomic<bool> over = false;
    std::atomic<bool> quiet = false;
    std::atomic<qint64> added = 0;
    std::atomic<qint64> delivered = 0;
    std::array<std::atomic<qint64>, producerCount> numbers = {0, 1'000'000'000, 2'000'000'000, 3'000'000'000};
    std::vector<std::thread> producers;
};

/** Returns the resident memory in KiB, 0 where the system does not tell. */
qint64 residentMemory()
{
    QFile file(u"/proc/self/statm"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').at(1).toLongLong() * 4 : 0;
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int seconds = application.arguments().value(1).toInt();
    if (seconds < 5) {
        std::fputs("usage: soak_commandqueue SECONDS (5 or more)\n", stderr);
        return 2;
    }
    auto generation = std::make_unique<Generation>(0);
    qint64 early = 0; // the peak of the second fifth, in KiB; the first is to warm up
    qint64 late = 0; // of the last fifth
    qint64 goneBefore = 0;
    int idle = 0; // seconds without a command's end
    // Counts its own ticks, so that it stops while the process does.
    for (int second = 1; second <= seconds || idle > 0; ++second) {
        for (int slice = 0; slice < 40; ++slice) {
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
            QCoreApplication::processEvents();
            generation->alternate();
        }
        idle = gone == goneBefore ? idle + 1 : 0;
        goneBefore = gone;
        require(idle < timeoutSeconds, "nothing moves");
        qint64 &peak = 5 * second <= 2 * seconds ? early : late;
        if (5 * second > seconds && (5 * second <= 2 * seconds || 5 * second > 4 * seconds)) {
            peak = std::max(peak, residentMemory());
        }
        if (second % generationSeconds == 0 && idle == 0) { // stop() would hide a standstill
            generation.reset();
            std::printf("%5d s: %lld commands, %lld KiB\n", second, gone.load(), residentMemory());
            std::fflush(stdout);
            generation = std::make_unique<Generation>(unsigned(second));
        }
    }
    generation.reset();
    std::printf("%lld commands; peak memory: %lld KiB early, %lld KiB late\n", gone.load(), early, late);
    require(late <= early + std::max<qint64>(early / 20, 2048), "the memory grows");
}

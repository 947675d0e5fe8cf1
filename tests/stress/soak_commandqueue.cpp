// A load that does not end by itself: several threads add, cancel, pause, permit, answer and restart, for the number of
// seconds given, and each command accounts for its signals when it goes. Ends with a message and an abort where a
// command has not ended once, a signal is missing or doubled, nothing moves any more, or the memory grows.
//
// Many times a second all producers wait until the last command has gone, since only then would a lost wake-up show: as
// long as others add, their wake-ups stand in for it. Every ten seconds a worker is stopped, from two threads and with
// its list full, and another takes its place.

#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
constexpr unsigned producerCount = 4;
constexpr int generationSeconds = 10;
constexpr int patience = 30; // seconds without a command's end; then something hangs
constexpr std::size_t outstandingPerProducer = 128;
constexpr qint64 undeliveredAtMost = 1'000; // signals on their way to the main thread

std::array<std::atomic<qint64>, 8> ends; // by status
std::atomic<qint64> made;
std::atomic<qint64> gone;
std::atomic<qint64> runs;
std::atomic<qint64> questions;
std::atomic<qint64> pauses;
std::atomic<qint64> restarts;
std::atomic<qint64> permissions;
qint64 silences = 0; // how often everything had ended while a worker slept

// While a producer answers, the worker may go on to the next status: what a slot on the producer's thread sees is not
// what it was called for.
thread_local bool answering = false;

void require(bool condition, const char *what, const CommandData *data = nullptr)
{
    if (!condition) {
        const QString which = data ? data->getReference() + u' ' + data->getStatusAsString() : u"soak"_s;
        qFatal("%s: %s", qPrintable(which), what);
    }
}

class Record : public CommandData
{
public:
    using CommandData::CommandData;
    QString getDescription() const override { return {}; }
    QString getTitle() const override { return {}; }
    QString getTypeName() const override { return {}; }

    static bool isFinal(Status status) { return status == FINISHED || status == CANCELLED || status == ERR; }

    // Counted by slots on the threads that emit.
    std::atomic<int> added = 0;
    std::atomic<int> removed = 0;
    std::atomic<int> begunRuns = 0;
    std::atomic<int> endedRuns = 0;
    std::atomic<int> asked = 0;
    std::atomic<int> processings = 0;
    std::atomic<int> settlements = 0;
    std::atomic<int> errors = 0;
    std::atomic<int> queueings = 0;
};

/** The number of a command tells what it does; most do nothing and finish. */
class SoakCommand : public Command
{
public:
    static constexpr qint64 kinds = 512;
    // Those from here on are cancelled by nobody but their producer, which knows whether they wait.
    static constexpr qint64 gated = 510;
    static constexpr qint64 asking = 511;

    SoakCommand(unsigned producer, qint64 number)
        : Command(nullptr)
        , kind(number % kinds)
        , record(referenceOf(producer, number), false)
        , startable(kind != gated)
    {
        ++made;
        QObject::connect(
            &record, &CommandData::statusChanged, &record, [this] { noteStatus(); }, Qt::DirectConnection);
        if (kind == asking) {
            record.setStatus(CommandData::REQUIRE_USER_ACTION);
        }
    }
    ~SoakCommand() override
    {
        const CommandData::Status status = record.getStatus();
        require(record.added == 1, "added other than once", &record);
        require(record.removed == 1, "removed other than once", &record);
        require(Record::isFinal(status), "not ended", &record);
        require(record.settlements == int(status != CommandData::ERR), "ended other than once", &record);
        const bool failed = executions > 0 && (kind == 503 || kind == 504);
        require(record.errors == int(failed), "in error other than once", &record);
        const int returns = record.queueings - int(kind != asking); // each but the last execution ends so
        const bool isCancelledLater = status == CommandData::CANCELLED && returns == executions;
        require(returns == executions - 1 || isCancelledLater, "back in the queue other than once", &record);
        require(kind == asking ? record.asked > 0 || executions == 0 : record.asked == 0, "asked wrongly", &record);
        require(record.begunRuns == record.endedRuns, "a run without begin or end", &record);
        require(record.processings == executions, "executed without the status", &record);
        require(executions > 0 || status == CommandData::CANCELLED, "ended without execution", &record);
        ++ends[std::size_t(status)];
        ++gone;
    }

    static QString referenceOf(unsigned producer, qint64 number)
    {
        return QString::number(producer) + u'/' + QString::number(number);
    }

    bool canBeStarted() const override { return startable; }
    bool isFinished() override { return finished; }
    CommandData *getCommandData() override { return &record; }

    const qint64 kind;
    Record record;
    std::atomic<bool> startable;
    int answered = 0; // the producer's

protected:
    void handleExecute() override
    {
        ++executions;
        switch (kind) {
        case 500: // works for a while, if it is let
        case 501:
            finished = false;
            for (int step = 0; step < 1000; ++step) {
                if (isCancelled() || isPaused()) {
                    return;
                }
            }
            finished = true;
            break;
        case 502:
            finished = executions == 3;
            break;
        case 503:
        case 504:
            setError(int(kind));
            break;
        default:
            break;
        }
    }

private:
    void noteStatus()
    {
        if (answering) {
            return;
        }
        const CommandData::Status status = record.getStatus();
        record.processings += status == CommandData::PROCESSING;
        record.errors += status == CommandData::ERR;
        record.queueings += status == CommandData::QUEUEING;
        record.settlements += status == CommandData::FINISHED || status == CommandData::CANCELLED;
    }

    bool finished = true; // the worker's, as is the next
    int executions = 0;
};

Record &recordOf(CommandData *data)
{
    return static_cast<Record &>(*data);
}

/** A worker with those who load it. */
class Generation
{
public:
    explicit Generation(unsigned seed)
        : queue(worker.getCommandQueue())
    {
        watch();
        worker.start();
        for (unsigned producer = 0; producer < producerCount; ++producer) {
            producers.emplace_back([this, producer, seed] { produce(producer, seed * producerCount + producer); });
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
        require(worker.wait(1000 * patience), "the worker does not end");
        require(queue.getCommands().isEmpty(), "commands left after stop()");
        require(!queue.isProcessing() && !running, "a run left after stop()");
        QCoreApplication::sendPostedEvents();
        require(delivered == added, "queued deliveries missing or doubled");
    }

    /** Lets the producers work or, the next time, wait until all their commands have gone. */
    void alternate()
    {
        if (!quiet) {
            quiet = true;
        } else if (made == gone) {
            ++silences;
            quiet = false;
        }
    }

private:
    template <typename Signal, typename Slot>
    void directly(Signal signal, Slot slot)
    {
        QObject::connect(&queue, signal, &queue, slot, Qt::DirectConnection);
    }

    void watch()
    {
        directly(&CommandQueue::commandAdded,
            [](const QSharedPointer<Command> &command) { ++recordOf(command->getCommandData()).added; });
        QObject::connect(
            &queue, &CommandQueue::commandAdded, &queue, [this] { ++delivered; }, Qt::QueuedConnection);
        directly(&CommandQueue::commandRemoved, [](CommandData *data) {
            require(Record::isFinal(data->getStatus()), "removed before its end", data);
            ++recordOf(data).removed;
        });
        directly(&CommandQueue::awaitingUserAction, [](CommandData *data) {
            ++questions;
            ++recordOf(data).asked;
        });
        directly(&CommandQueue::commandStarted, [this](CommandData *data) {
            require(!std::exchange(running, data), "a run within a run", data);
            ++runs;
            ++recordOf(data).begunRuns;
        });
        directly(&CommandQueue::commandFinished, [this](CommandData *data) {
            require(std::exchange(running, nullptr) == data, "the end of another run", data);
            ++recordOf(data).endedRuns;
        });
    }

    void produce(unsigned producer, unsigned seed)
    {
        std::minstd_rand random(seed + 1);
        std::vector<QSharedPointer<SoakCommand>> own;
        bool pausing = false; // this producer owes a restart
        while (!over) {
            if (!quiet && own.size() < outstandingPerProducer && added - delivered < undeliveredAtMost) {
                own.push_back(QSharedPointer<SoakCommand>::create(producer, numbers[producer]++));
                ++added;
                queue.addCommand(own.back());
                if (random() % 16 == 0) {
                    cancelAny(random);
                }
                if (random() % 128 == 0) {
                    pausing = true;
                    ++pauses;
                    queue.pause();
                }
            } else {
                for (std::size_t index = own.size(); index > 0; --index) {
                    attend(own, index - 1, random);
                }
                std::this_thread::sleep_for(std::chrono::microseconds(50)); // leaves the processor to the worker
            }
            if (pausing && random() % 2 == 0) {
                pausing = false;
                restart();
            }
        }
    }

    void restart()
    {
        ++restarts;
        worker.restart();
    }

    /** Lets go a command that has ended, and does what another waits for. */
    void attend(std::vector<QSharedPointer<SoakCommand>> &own, std::size_t index, std::minstd_rand &random)
    {
        SoakCommand &command = *own[index];
        if (command.record.removed > 0) {
            std::swap(own[index], own.back());
            own.pop_back();
        } else if (command.kind == SoakCommand::gated && !command.startable) {
            if (random() % 4 == 0) {
                queue.cancelCommand(own[index]);
                return;
            }
            command.startable = true;
            ++permissions;
            Q_EMIT queue.finishCommandAllowed(true);
        } else if (command.record.asked > command.answered) {
            if (command.answered++ == 0) {
                answering = true;
                command.record.setStatus(CommandData::QUEUEING);
                answering = false;
            }
            restart();
        }
    }

    void cancelAny(std::minstd_rand &random)
    {
        const auto producer = unsigned(random() % producerCount);
        const qint64 number = numbers[producer] - 1 - qint64(random() % outstandingPerProducer);
        if (number >= 0 && number % SoakCommand::kinds < SoakCommand::gated) {
            queue.cancelCommandByReference(SoakCommand::referenceOf(producer, number));
        }
    }

    CommandQueueThread worker;
    CommandQueue &queue;
    CommandData *running = nullptr; // the driving thread's, and after its end the main thread's
    std::atomic<bool> over = false;
    std::atomic<bool> quiet = false;
    std::atomic<qint64> added = 0;
    std::atomic<qint64> delivered = 0;
    std::array<std::atomic<qint64>, producerCount> numbers{};
    std::vector<std::thread> producers;
};

/** Returns the resident memory in KiB, 0 where the system does not tell. */
qint64 residentMemory()
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QList<QByteArray> lines = file.readAll().split('\n');
    const auto line =
        std::find_if(lines.begin(), lines.end(), [](const QByteArray &text) { return text.startsWith("VmRSS:"); });
    return line == lines.end() ? 0 : line->simplified().split(' ').at(1).toLongLong();
}

/** Counts seconds by its own ticks, so that it stands still while the process does. */
class Soak : public QObject
{
public:
    explicit Soak(int seconds)
        : seconds(seconds)
    {
        connect(&timer, &QTimer::timeout, this, &Soak::tick);
        timer.start(1000);
        connect(&alternation, &QTimer::timeout, this, [this] { generation->alternate(); });
        alternation.start(25);
    }

private:
    void tick()
    {
        memory.push_back(residentMemory());
        const int elapsed = int(memory.size());
        ++age;
        idle = gone == lastGone ? idle + 1 : 0;
        lastGone = gone;
        require(idle < patience, "nothing moves");
        const bool moves = idle == 0; // what stands still is not to be hidden by a stop()
        const bool isLast = moves && elapsed >= seconds;
        if (isLast || (moves && age >= generationSeconds)) {
            generation.reset();
            age = 0;
            require(made == gone, "commands left");
        }
        if (isLast || elapsed % std::max(seconds / 10, 1) == 0) {
            report(elapsed);
        }
        if (isLast) {
            judgeMemory();
            alternation.stop();
            QCoreApplication::quit();
        } else if (!generation) {
            generation = std::make_unique<Generation>(unsigned(elapsed));
        }
    }

    void report(int elapsed) const
    {
        std::printf("%5d s %12lld commands: %lld finished, %lld cancelled, %lld in error; %lld runs, %lld pauses, %lld "
                    "restarts, "
                    "%lld permissions, %lld questions, %lld silences; %lld KiB\n",
            elapsed,
            gone.load(),
            ends[CommandData::FINISHED].load(),
            ends[CommandData::CANCELLED].load(),
            ends[CommandData::ERR].load(),
            runs.load(),
            pauses.load(),
            restarts.load(),
            permissions.load(),
            questions.load(),
            silences,
            memory.back());
        std::fflush(stdout);
    }

    /** Compares the peak of the last fifth with that of the second; the first is to get warm. */
    void judgeMemory() const
    {
        const auto fifth = [this](std::ptrdiff_t index) {
            const auto length = std::ptrdiff_t(memory.size() / 5);
            return *std::max_element(
                memory.begin() + index * length, memory.begin() + index * length + std::max<std::ptrdiff_t>(length, 1));
        };
        const qint64 early = fifth(1);
        const qint64 late = fifth(4);
        std::printf("peak memory: %lld KiB early, %lld KiB late\n", early, late);
        std::fflush(stdout);
        require(late <= early + std::max<qint64>(early / 20, 2048), "the memory grows");
    }

    const int seconds;
    QTimer timer;
    QTimer alternation;
    std::vector<qint64> memory; // one entry a second
    int age = 0; // seconds of the generation
    int idle = 0; // seconds without a command's end
    qint64 lastGone = -1;
    std::unique_ptr<Generation> generation = std::make_unique<Generation>(0);
};
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int seconds = application.arguments().value(1).toInt();
    if (seconds < 5) {
        std::fputs("usage: soak_commandqueue SECONDS (5 or more)\n", stderr);
        return 2;
    }
    const Soak soak(seconds);
    return QCoreApplication::exec();
}

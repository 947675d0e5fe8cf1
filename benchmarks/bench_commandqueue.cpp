// The command queue and its worker, compared with a QThreadPool of one thread that does the same empty work.
//
// Every benchmark measures both in turn and reports the ratio: `per_pool` is the queue's time divided by the pool's,
// `ns_each` the queue's time for one command in nanoseconds.

#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QSemaphore>
#include <QThreadPool>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

class EmptyData : public CommandData
{
public:
    explicit EmptyData(const QString &reference)
        : CommandData(reference, false)
    {
    }
    QString getDescription() const override { return {}; }
    QString getTitle() const override { return {}; }
    QString getTypeName() const override { return {}; }
};

class EmptyCommand : public Command
{
public:
    explicit EmptyCommand(const QString &reference)
        : Command(nullptr)
        , data(reference)
    {
    }
    bool canBeStarted() const override { return true; }
    CommandData *getCommandData() override { return &data; }
    Clock::time_point begun;

protected:
    void handleExecute() override { begun = Clock::now(); }

private:
    EmptyData data;
};

class WaitingCommand : public Command
{
public:
    WaitingCommand(CommandData *data, QSemaphore *running, QSemaphore *goOn)
        : Command(data)
        , running(running)
        , goOn(goOn)
    {
    }
    bool canBeStarted() const override { return true; }

protected:
    void handleExecute() override
    {
        running->release();
        goOn->acquire();
    }

private:
    QSemaphore *running;
    QSemaphore *goOn;
};

class Emitter : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void done(QObject *record);
};

class EmptyRunnable : public QRunnable
{
public:
    explicit EmptyRunnable(Emitter *emitter)
        : emitter(emitter)
    {
        setAutoDelete(false);
    }
    void run() override
    {
        begun = Clock::now();
        Q_EMIT emitter->done(emitter);
    }
    Clock::time_point begun;

private:
    Emitter *emitter;
};

QList<QSharedPointer<Command>> makeCommands(qint64 count)
{
    QList<QSharedPointer<Command>> commands;
    commands.reserve(count);
    for (qint64 index = 0; index < count; ++index) {
        commands.append(QSharedPointer<EmptyCommand>::create(QString::number(index)));
    }
    return commands;
}

// Counts signals down: on the thread that emits them, or with a queued connection on the thread that created it.
class Counter : public QObject
{
public:
    template <typename Sender, typename Signal>
    Counter(const Sender *sender, Signal signal, qint64 count, Qt::ConnectionType type)
        : type(type)
        , left(count)
    {
        connect(
            sender,
            signal,
            this,
            [this] {
                if (--left == 0) {
                    all.release();
                }
            },
            type);
    }
    void wait()
    {
        while (type == Qt::QueuedConnection && left > 0) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        all.acquire();
    }

private:
    const Qt::ConnectionType type;
    qint64 left;
    QSemaphore all;
};

double runOnQueue(const QList<QSharedPointer<Command>> &commands, Qt::ConnectionType type, bool poll = false)
{
    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();
    Counter counter(&queue, &CommandQueue::commandRemoved, commands.size(), type);
    std::atomic<bool> polling = poll;
    std::thread poller([&] {
        while (polling) {
            benchmark::DoNotOptimize(queue.getCommands().size());
        }
    });
    worker.start();
    const auto start = Clock::now();
    for (const QSharedPointer<Command> &command : commands) {
        queue.addCommand(command);
    }
    counter.wait();
    const double seconds = secondsSince(start);
    polling = false;
    poller.join();
    worker.stop();
    worker.wait();
    return seconds;
}

double runOnPool(qint64 count, Qt::ConnectionType type)
{
    Emitter emitter;
    Counter counter(&emitter, &Emitter::done, count, type);
    std::vector<std::unique_ptr<EmptyRunnable>> runnables;
    for (qint64 index = 0; index < count; ++index) {
        runnables.push_back(std::make_unique<EmptyRunnable>(&emitter));
    }
    QThreadPool pool;
    pool.setMaxThreadCount(1);
    const auto start = Clock::now();
    for (const auto &runnable : runnables) {
        pool.start(runnable.get());
    }
    counter.wait();
    const double seconds = secondsSince(start);
    pool.waitForDone();
    return seconds;
}

void report(benchmark::State &state, double seconds, qint64 commands)
{
    state.counters["ns_each"] = 1e9 * seconds / static_cast<double>(commands) / static_cast<double>(state.iterations());
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<qsizetype>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Reports medians: another process on the processor can make single turns several times as long.
void addAndRun(benchmark::State &state, Qt::ConnectionType type)
{
    std::vector<double> queueSeconds;
    std::vector<double> poolSeconds;
    for (auto _ : state) {
        const QList<QSharedPointer<Command>> commands = makeCommands(state.range(0));
        queueSeconds.push_back(runOnQueue(commands, type));
        poolSeconds.push_back(runOnPool(state.range(0), type));
        state.SetIterationTime(queueSeconds.back());
    }
    state.counters["ns_each"] = 1e9 * median(queueSeconds) / static_cast<double>(state.range(0));
    state.counters["per_pool"] = median(queueSeconds) / median(poolSeconds);
}

void addAndRunWhilePolled(benchmark::State &state)
{
    double seconds = 0;
    for (auto _ : state) {
        const double once = runOnQueue(makeCommands(state.range(0)), Qt::DirectConnection, true);
        seconds += once;
        state.SetIterationTime(once);
    }
    report(state, seconds, state.range(0));
}

// The time from addCommand() on a sleeping worker to the first line of handleExecute().
void wakeUp(benchmark::State &state)
{
    QSemaphore done;
    CommandQueueThread worker;
    QObject::connect(
        &worker.getCommandQueue(),
        &CommandQueue::commandFinished,
        &worker,
        [&] { done.release(); },
        Qt::DirectConnection);
    worker.start();
    QThreadPool pool;
    pool.setMaxThreadCount(1);
    pool.setExpiryTimeout(-1);
    Emitter emitter;
    QObject::connect(
        &emitter, &Emitter::done, &emitter, [&] { done.release(); }, Qt::DirectConnection);
    EmptyRunnable runnable(&emitter);
    pool.start(&runnable);
    done.acquire();

    const auto fallAsleep = [] { std::this_thread::sleep_for(std::chrono::microseconds(200)); };
    double queueSeconds = 0;
    double poolSeconds = 0;
    for (auto _ : state) {
        const auto command = QSharedPointer<EmptyCommand>::create(u"A"_s);
        fallAsleep();
        const auto added = Clock::now();
        worker.getCommandQueue().addCommand(command);
        done.acquire();
        const double seconds = std::chrono::duration<double>(command->begun - added).count();
        queueSeconds += seconds;
        state.SetIterationTime(seconds);

        fallAsleep();
        const auto started = Clock::now();
        pool.start(&runnable);
        done.acquire();
        poolSeconds += std::chrono::duration<double>(runnable.begun - started).count();
    }
    report(state, queueSeconds, 1);
    state.counters["per_pool"] = queueSeconds / poolSeconds;
    worker.stop();
    worker.wait();
}

// One command runs meanwhile and stays at the front of the list.
void stopWithWaiting(benchmark::State &state)
{
    double seconds = 0;
    for (auto _ : state) {
        const QList<QSharedPointer<Command>> commands = makeCommands(state.range(0));
        EmptyData record(u"running"_s);
        QSemaphore running;
        QSemaphore stopped;
        CommandQueueThread worker;
        CommandQueue &queue = worker.getCommandQueue();
        queue.addCommand(QSharedPointer<WaitingCommand>::create(&record, &running, &stopped));
        worker.start();
        running.acquire();
        for (const QSharedPointer<Command> &command : commands) {
            queue.addCommand(command);
        }
        const auto start = Clock::now();
        worker.stop();
        const double once = secondsSince(start);
        seconds += once;
        state.SetIterationTime(once);
        stopped.release();
        worker.wait();
    }
    report(state, seconds, state.range(0));
}

void cancelLastByReference(benchmark::State &state)
{
    double seconds = 0;
    const QList<QSharedPointer<Command>> commands = makeCommands(state.range(0));
    CommandQueue queue;
    for (const QSharedPointer<Command> &command : commands) {
        queue.addCommand(command);
    }
    const QString reference = QString::number(state.range(0) - 1);
    for (auto _ : state) {
        const auto start = Clock::now();
        queue.cancelCommandByReference(reference);
        const double once = secondsSince(start);
        seconds += once;
        state.SetIterationTime(once);
        queue.addCommand(commands.last());
    }
    report(state, seconds, state.range(0));
}

BENCHMARK_CAPTURE(addAndRun, signalHandledOnTheWorker, Qt::DirectConnection)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
BENCHMARK_CAPTURE(addAndRun, signalDeliveredToTheMainThread, Qt::QueuedConnection)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
BENCHMARK(addAndRunWhilePolled)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK(wakeUp)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(3000);
BENCHMARK(stopWithWaiting)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK(cancelLastByReference)->Arg(10'000)->Arg(100'000)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

#include "bench_commandqueue.moc"

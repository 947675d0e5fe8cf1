#include "CommandQueueThread.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

// How the worker is woken.
//
// None lost. A wake-up stores pendingWakeUp under wakeUpMutex and notifies after that; the worker tests pendingWakeUp
// and goes to sleep under the same lock. So a wake-up either comes before the test, which sees it, or finds the worker
// asleep. The worker takes the pending wake-up before it calls process(): what comes later stays pending until the
// next.
//
// None stale. Each wake-up carries the number of pauses that the queue had seen by then, and a run begins only if,
// under the queue's mutex, the number is still the same. A pause in between, also that of a command which requires user
// action or of stop(), makes the numbers differ, and the wake-up is void. Of several pending wake-ups the one with the
// highest number is kept: it is the last, and it is valid if any is. A wake-up that a run has served already and that
// was not voided costs one more look at the list, which starts nothing that a new wake-up would not.
//
// No permission is lost. finishCommandAllowed() leaves a run under way alone, and that is safe because the queue ends
// its `processing` in the same hold in which it takes the run's last look at the list.
//
// No deadlock. The locks are taken in the order mutex, queue's mutex, wakeUpMutex. commandAdded() arrives here with the
// queue's mutex held, so a wake-up must not take `mutex`, which stop() holds while it takes the queue's: hence the
// leaf. The worker's loop holds no lock when it takes wakeUpMutex or `mutex`, and calls process() with neither.
//
// stop() sets its flag first and wakes the worker last, so a worker that goes to sleep in between is woken. The worker
// reads the flag under `mutex`: it does not end before a stop() under way has done its work.
//
// tests/model/wakeup.pml is this design as a model, of which the tests search every interleaving.

CommandQueueThread::CommandQueueThread()
    : CommandQueueThread(std::make_unique<CommandQueue>())
{
}

CommandQueueThread::CommandQueueThread(std::unique_ptr<CommandQueue> commandQueue)
    : commandQueue(commandQueue ? std::move(commandQueue) : std::make_unique<CommandQueue>())
{
    setObjectName(u"CommandQueue"_s); // Linux shows 15 characters of a thread's name
    connect(this->commandQueue.get(), &CommandQueue::commandAdded, this, &CommandQueueThread::processQueue);
    connect(
        this->commandQueue.get(), &CommandQueue::finishCommandAllowed, this, &CommandQueueThread::finishCommandAllowed);
}

CommandQueueThread::~CommandQueueThread()
{
    // QThread says the same, but only when the worker has lost the fields that it runs on, and the destructor of the
    // condition would wait for a worker that sleeps.
    if (isRunning()) {
        qFatal("QThread: Destroyed while thread is still running"); // GCOVR_EXCL_LINE: nothing is counted then
    }
}

CommandQueue &CommandQueueThread::getCommandQueue()
{
    return *commandQueue;
}

const CommandQueue &CommandQueueThread::getCommandQueue() const
{
    return *commandQueue;
}

void CommandQueueThread::stop()
{
    Q_ASSERT_X(!commandQueue->isInCriticalSection(), "CommandQueueThread::stop", "called with the queue's lock held");
    QList<QSharedPointer<Command>> cancelled; // outlives the lock: the last reference runs a client's destructor
    {
        const std::lock_guard lock(mutex);
        stopRequested = true;
        cancelled = commandQueue->cancelAll();
    }
    wakeUp();
}

void CommandQueueThread::restart()
{
    wakeUp();
}

void CommandQueueThread::processQueue()
{
    wakeUp();
}

void CommandQueueThread::finishCommandAllowed(bool finishAllowed)
{
    if (!finishAllowed || commandQueue->isProcessing()) {
        return;
    }
    wakeUp();
}

void CommandQueueThread::run()
{
    commandQueue->process();
    while (const std::optional<quint64> pauseCount = waitForWakeUp()) {
        commandQueue->processUnlessPausedSince(*pauseCount);
    }
}

void CommandQueueThread::wakeUp()
{
    const quint64 pauseCount = commandQueue->getPauseCount();
    {
        const std::lock_guard lock(wakeUpMutex);
        pendingWakeUp = std::max(pendingWakeUp, std::optional(pauseCount)); // an empty one is the least
    }
    condition.notify_one();
}

// Returns the pause count of the wake-up, or nothing once a stop is requested.
std::optional<quint64> CommandQueueThread::waitForWakeUp()
{
    std::optional<quint64> pauseCount;
    {
        std::unique_lock lock(wakeUpMutex);
        condition.wait(lock, [this] { return pendingWakeUp || stopRequested; });
        pauseCount = std::exchange(pendingWakeUp, std::nullopt);
    }
    const std::lock_guard lock(mutex);
    return stopRequested ? std::nullopt : pauseCount;
}

#include "moc_CommandQueueThread.cpp"

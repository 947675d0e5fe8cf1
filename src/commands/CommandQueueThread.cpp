#include "CommandQueueThread.h"

#include "Command.h"

#include <QList>
#include <QSharedPointer>
#include <QString>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

// The wake-up protocol.
//
// No wake-up is lost. wakeUp() stores pendingWakeUp under wakeUpMutex and then notifies. The worker locks the same
// mutex to test pendingWakeUp and to go to sleep. So either the test sees the wake-up, or the notification finds the
// worker asleep. The worker takes the pending wake-up before it calls process(): a later one stays pending for the next
// call.
//
// No stale wake-up ends a pause. Each wake-up carries the queue's pause count at the time of the wake-up, and a run
// begins only if, under the queue's mutex, the count is still the same. Any pause in between changes the count and so
// voids the wake-up, including a pause by stop() or by a command that requires user action. Of several pending wake-ups
// the one with the highest count is kept: it is the latest, and it is valid if any of them is. A wake-up that an
// earlier run has already served makes the worker look at the list once more. That is harmless: the queue was not
// paused in between.
//
// finishCommandAllowed() does nothing while the queue is processing. This loses no wake-up: the queue clears
// `processing` in the critical section in which the run looks at the list for the last time.
//
// No deadlock. The lock order is mutex, queue's mutex, wakeUpMutex. processQueue() can be called with the queue's mutex
// held, by commandAdded(), so a wake-up must not take `mutex`: stop() holds that while it takes the queue's mutex.
// Therefore wake-ups have a mutex of their own. The worker takes wakeUpMutex and `mutex` one at a time, and calls
// process() with neither.
//
// stop() sets its flag first and wakes the worker last, so a worker that goes to sleep in between is woken. The worker
// reads the flag under `mutex`, so it does not end before a stop() under way has finished.
//
// tests/model/wakeup.pml models this protocol; the tests search all its interleavings.

CommandQueueThread::CommandQueueThread()
    : CommandQueueThread(std::make_unique<CommandQueue>())
{
}

CommandQueueThread::CommandQueueThread(std::unique_ptr<CommandQueue> commandQueue)
    : commandQueue(commandQueue ? std::move(commandQueue) : std::make_unique<CommandQueue>())
{
    setObjectName(u"CommandQueue"_s); // Linux truncates a thread's name to 15 characters
    connect(this->commandQueue.get(), &CommandQueue::commandAdded, this, &CommandQueueThread::processQueue);
    connect(
        this->commandQueue.get(), &CommandQueue::finishCommandAllowed, this, &CommandQueueThread::finishCommandAllowed);
}

CommandQueueThread::~CommandQueueThread()
{
    // ~QThread() reports this too late: the members that the worker uses are destroyed by then, and the destructor of
    // the condition variable would block while the worker sleeps.
    if (isRunning()) {
        qFatal("QThread: Destroyed while thread is still running"); // GCOVR_EXCL_LINE: aborts without saving coverage
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
        pendingWakeUp = std::max(pendingWakeUp, std::optional(pauseCount)); // an empty optional compares less
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

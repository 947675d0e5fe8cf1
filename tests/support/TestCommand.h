#ifndef TARNWICK_TESTS_SUPPORT_TESTCOMMAND_H
#define TARNWICK_TESTS_SUPPORT_TESTCOMMAND_H

#include <commands/Command.h>
#include <commands/CommandData.h>
#include <commands/CommandQueue.h>

#include <QMutex>
#include <QMutexLocker>
#include <QStringList>

#include <atomic>
#include <functional>
#include <thread>

class TestData : public CommandData
{
public:
    explicit TestData(const QString &reference, const QString &description = QString())
        : CommandData(reference, true)
        , description(description)
    {
        const auto count = [this] { ends += getStatus() == FINISHED || getStatus() == CANCELLED; };
        connect(this, &CommandData::statusChanged, this, count, Qt::DirectConnection);
    }

    /** Counts the removals of records, which are all of this class, from @p queue. */
    static void countRemovals(const CommandQueue &queue)
    {
        const auto count = [](CommandData *data) { ++static_cast<TestData *>(data)->removals; };
        connect(&queue, &CommandQueue::commandRemoved, &queue, count, Qt::DirectConnection);
    }

    QString getDescription() const override
    {
        CommandData::getErrorMessage(); // deadlocks if the record holds its lock here
        return description;
    }
    QString getTitle() const override { return getReference(); }
    QString getTypeName() const override { return QStringLiteral("test"); }

    std::atomic<int> ends = 0; // how often it came to FINISHED or CANCELLED
    std::atomic<int> removals = 0;

private:
    const QString description;
};

/** Collects lines from any thread. */
class Log
{
public:
    void add(const QString &line)
    {
        const QMutexLocker lock(&mutex);
        list.append(line);
    }
    QStringList lines() const
    {
        const QMutexLocker lock(&mutex);
        return {list.begin(), list.end()}; // not shared, so the mutex alone orders the accesses
    }
    QString text() const { return lines().join(QStringLiteral(", ")); }

private:
    mutable QMutex mutex;
    QStringList list;
};

/** A command whose answers and work are set from outside; the defaults are those of Command. */
class TestCommand : public Command
{
public:
    explicit TestCommand(CommandData *data, std::function<void(TestCommand &)> work = {})
        : Command(data)
        , work(std::move(work))
    {
    }
    ~TestCommand() override
    {
        if (destroyed) {
            destroyed();
        }
    }

    bool canBeStarted() const override
    {
        ++looks;
        const bool answer = startable;
        if (lookHook) {
            lookHook();
        }
        return answer;
    }
    bool isFinished() override
    {
        note(QStringLiteral("isFinished"));
        return finished;
    }

    std::atomic<bool> startable = true;
    std::atomic<bool> finished = true;
    mutable std::atomic<int> looks = 0;
    std::function<void(TestCommand &)> work;
    std::function<void()> destroyed;
    std::function<void()> lookHook;
    std::function<void(const QString &call)> callHook;
    Log calls; // of isFinished() and the hooks, in order

protected:
    void handleExecute() override
    {
        note(QStringLiteral("execute"));
        if (work) {
            work(*this);
        }
    }
    void handleCancel() override { note(QStringLiteral("cancel")); }
    void handlePause() override { note(QStringLiteral("pause")); }
    void handleResume() override { note(QStringLiteral("resume")); }
    void handleError() override { note(QStringLiteral("error")); }

private:
    void note(const QString &call)
    {
        calls.add(call);
        if (callHook) {
            callHook(call);
        }
    }
};

/** A command with its record, which outlives it. */
struct Item
{
    explicit Item(const QString &reference, std::function<void(TestCommand &)> work = {})
        : data(reference)
        , command(QSharedPointer<TestCommand>::create(&data, std::move(work)))
    {
    }

    TestData data;
    QSharedPointer<TestCommand> command;
};

/** Receives a signal of a queue with the record of its command. */
using Listener = std::function<void(const QString &event, const CommandData *data)>;

inline void follow(const CommandQueue &queue, const Listener &listener)
{
    const auto connect = [&](const QString &event, void (CommandQueue::*signal)(CommandData *)) {
        QObject::connect(&queue, signal, [=](const CommandData *data) { listener(event, data); });
    };
    connect(QStringLiteral("removed"), &CommandQueue::commandRemoved);
    connect(QStringLiteral("awaiting"), &CommandQueue::awaitingUserAction);
    connect(QStringLiteral("begin"), &CommandQueue::commandStarted);
    connect(QStringLiteral("end"), &CommandQueue::commandFinished);
    QObject::connect(&queue, &CommandQueue::commandAdded, [=](const QSharedPointer<Command> &command) {
        listener(QStringLiteral("added"), command->getCommandData());
    });
}

/** Lets a test see whether the queue's mutex is held, and reach what the queue offers to subclasses. */
class TestQueue : public CommandQueue
{
public:
    using CommandQueue::CommandQueue;
    using CommandQueue::currentCommand;
    using CommandQueue::getNextCommandThatCanBeStarted;
    using CommandQueue::removeCommand;
    using CommandQueue::startNextCommand;

    /** Returns whether another thread would have to wait for the mutex. */
    bool isLocked() const
    {
        bool locked = false;
        std::thread([&] {
            locked = !mutex.tryLock();
            if (!locked) {
                mutex.unlock();
            }
        }).join();
        return locked;
    }
};

#endif

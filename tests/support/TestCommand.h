#ifndef TARNWICK_TESTS_COMMANDS_TESTCOMMAND_H
#define TARNWICK_TESTS_COMMANDS_TESTCOMMAND_H

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
    }

    QString getDescription() const override
    {
        getErrorMessage(); // would wait for ever if the record held its lock here
        return description;
    }
    QString getTitle() const override { return getReference(); }
    QString getTypeName() const override { return QStringLiteral("test"); }

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
        return list;
    }

    /** Logs, in order and on the emitting thread, all signals of @p queue and the status changes of @p records. */
    void follow(const CommandQueue *queue, const QList<CommandData *> &records)
    {
        const auto logSignal = [this, queue](const QString &name, void (CommandQueue::*signal)(CommandData *)) {
            QObject::connect(
                queue,
                signal,
                queue,
                [this, name](CommandData *data) { add(name + u' ' + data->getReference()); },
                Qt::DirectConnection);
        };
        logSignal(QStringLiteral("removed"), &CommandQueue::commandRemoved);
        logSignal(QStringLiteral("awaiting"), &CommandQueue::awaitingUserAction);
        logSignal(QStringLiteral("run begins"), &CommandQueue::commandStarted);
        logSignal(QStringLiteral("run ends"), &CommandQueue::commandFinished);
        for (CommandData *record : records) {
            QObject::connect(
                record,
                &CommandData::statusChanged,
                queue,
                [this](CommandData *data) { add(data->getReference() + u' ' + data->getStatusAsString()); },
                Qt::DirectConnection);
        }
    }

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
        if (lookHook) {
            lookHook();
        }
        return startable;
    }
    bool isFinished() override
    {
        calls.add(QStringLiteral("finished?"));
        return finished;
    }

    std::atomic<bool> startable = true;
    std::atomic<bool> finished = true;
    mutable std::atomic<int> looks = 0;
    std::function<void(TestCommand &)> work;
    std::function<void()> destroyed;
    std::function<void()> cancelHook;
    std::function<void()> lookHook;
    Log calls; // of isFinished() and the hooks, in order

protected:
    void handleExecute() override
    {
        calls.add(QStringLiteral("execute"));
        if (work) {
            work(*this);
        }
    }
    void handleCancel() override
    {
        calls.add(QStringLiteral("cancel"));
        if (cancelHook) {
            cancelHook();
        }
    }
    void handlePause() override { calls.add(QStringLiteral("pause")); }
    void handleResume() override { calls.add(QStringLiteral("resume")); }
    void handleError() override { calls.add(QStringLiteral("error %1").arg(getCommandData()->getErrorCode())); }
};

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

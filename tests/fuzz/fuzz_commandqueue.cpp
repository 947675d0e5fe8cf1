// Aims at: src/commands/CommandQueue.cpp src/commands/CommandScheduler.cpp
#include "../support/LogRecorder.h"
#include "../support/TestCommand.h"
#include "Fuzz.h"

// A queue and a plain model of its rules, on one thread and driven by the same bytes: operations of a client, and more
// of them from within slots and hooks. What can be seen of the two has to be the same after each event.

using namespace Qt::StringLiterals;

namespace {

using CommandPointer = QSharedPointer<Command>;

/** The rules in plain words. Of the base only the signals, the list and the place of the current command are used. */
class Model : public CommandQueue
{
public:
    void addCommand(const CommandPointer &command)
    {
        if (!isIn(command, CommandData::REQUIRE_USER_ACTION)) {
            command->getCommandData()->setStatus(CommandData::QUEUEING);
        }
        commands.append(command);
        Q_EMIT commandAdded(command);
    }
    void cancelCommand(const CommandPointer &command)
    {
        command->cancel();
        if (command != currentCommand) {
            end(command, CommandData::CANCELLED);
        }
    }
    void cancelCommandByReference(const QString &reference)
    {
        for (const CommandPointer &command : QList(commands)) {
            if (command->getCommandData()->getReference() == reference) {
                return cancelCommand(command);
            }
        }
    }
    void removeCommand(const CommandPointer &command)
    {
        commands.removeOne(command);
        Q_EMIT commandRemoved(command->getCommandData());
    }
    void pause()
    {
        paused = true;
        if (currentCommand) {
            currentCommand->pause();
        }
    }
    void process()
    {
        const CommandPointer first = getNextCommandThatCanBeStarted();
        if (!first) {
            return;
        }
        paused = false;
        processing = true;
        Q_EMIT commandStarted(first->getCommandData());
        while (getNextCommandThatCanBeStarted() && !paused) {
            startNextCommand();
        }
        processing = false;
        Q_EMIT commandFinished(first->getCommandData());
    }
    void startNextCommand()
    {
        currentCommand = paused ? nullptr : getNextCommandThatCanBeStarted();
        if (currentCommand && isIn(currentCommand, CommandData::REQUIRE_USER_ACTION)) {
            paused = true;
            Q_EMIT awaitingUserAction(currentCommand->getCommandData());
        } else if (currentCommand) {
            run(currentCommand);
        }
        currentCommand.reset();
    }
    bool isPaused() const { return paused; }
    bool isProcessing() const { return processing; }
    bool isActive() const { return !paused && !commands.isEmpty(); }

    CommandPointer getNextCommandThatCanBeStarted() const
    {
        for (const CommandPointer &command : commands) {
            if (command->canBeStarted()) {
                return command;
            }
        }
        return nullptr;
    }

private:
    static bool isIn(const CommandPointer &command, CommandData::Status status)
    {
        return command->getCommandData()->getStatus() == status;
    }
    void run(const CommandPointer &command)
    {
        command->getCommandData()->setStatus(CommandData::PROCESSING);
        command->execute();
        if (command->isFinished() && !isIn(command, CommandData::ERR)) {
            return end(command, CommandData::FINISHED);
        }
        if (isIn(command, CommandData::ERR) && !command->isCancelled()) {
            return removeCommand(command);
        }
        if (!command->isCancelled()) {
            command->getCommandData()->setStatus(CommandData::QUEUEING);
        }
        if (command->isCancelled()) { // by now
            end(command, CommandData::CANCELLED);
        }
    }
    void end(const CommandPointer &command, CommandData::Status status)
    {
        command->getCommandData()->setStatus(status);
        removeCommand(command);
    }

    bool paused = false;
    bool processing = false;
};

/** A queue, its commands, and the operations that the bytes of an input choose. */
template <typename Queue>
class World
{
public:
    explicit World(const Input &input)
        : input(input)
    {
        const auto listen = [this](auto *sender, auto signal, const QString &event) {
            QObject::connect(sender, signal, &queue, [=](CommandData *data) { happen(event, data); });
        };
        for (TestData &record : records) {
            listen(&record, &CommandData::statusChanged, u"status "_s);
            commands << QSharedPointer<TestCommand>::create(&record, [this](TestCommand &self) {
                check(self.isPaused(), false);
                happen(u"execute "_s, self.getCommandData());
                self.finished = !this->input.oneIn(3);
            });
            commands.last()->cancelHook = [this, &record] { happen(u"cancel "_s, &record); };
        }
        const CommandQueue *sender = &queue;
        listen(sender, &CommandQueue::commandRemoved, u"removed "_s);
        listen(sender, &CommandQueue::awaitingUserAction, u"awaiting "_s);
        listen(sender, &CommandQueue::commandStarted, u"run begins "_s);
        listen(sender, &CommandQueue::commandFinished, u"run ends "_s);
        QObject::connect(sender, &CommandQueue::commandAdded, [this](const CommandPointer &command) {
            happen(u"added "_s, command->getCommandData());
        });
    }

    /** Does what the next bytes say; drives the queue only from outside. */
    void operate()
    {
        const int operation = input.below(depth == 0 ? 14 : 11);
        const auto command = input.oneOf(commands);
        CommandData *const data = command->getCommandData();
        const int number = input.below(9);
        operation == 1        ? queue.addCommand(command)
            : operation == 2  ? queue.cancelCommand(command)
            : operation == 3  ? queue.cancelCommandByReference(data->getReference())
            : operation == 4  ? queue.removeCommand(command)
            : operation == 5  ? queue.pause()
            : operation == 6  ? command->resume()
            : operation == 7  ? command->setError(number - 1)
            : operation == 8  ? data->setStatus(static_cast<CommandData::Status>(number))
            : operation == 9  ? data->setStatus(CommandData::REQUIRE_USER_ACTION)
            : operation == 10 ? void(command->startable = !command->startable)
            : operation == 11 ? queue.startNextCommand()
            : operation >= 12 ? queue.process()
                              : void();
        if (depth == 0) {
            note(u"done "_s);
        }
    }

    Input input;
    QStringList events;

private:
    void happen(const QString &event, const CommandData *data)
    {
        note(event + data->getReference());
        if (++depth < 8) {
            operate();
        }
        --depth;
    }

    /** Notes an event and what can be seen of the queue and the commands, numbers as characters. */
    void note(QString event)
    {
        const auto add = [&event](qsizetype number) { event += QChar(static_cast<char16_t>(u'0' + number)); };
        add(int(queue.isPaused()) + 2 * int(queue.isProcessing()) + 4 * int(queue.isActive()));
        add(commands.indexOf(queue.getNextCommandThatCanBeStarted()));
        for (const CommandPointer &command : queue.getCommands()) {
            add(commands.indexOf(command));
        }
        for (const auto &command : std::as_const(commands)) {
            event += u'|';
            add(command->getCommandData()->getStatus());
            add(command->getCommandData()->getErrorCode());
            add(int(command->isCancelled()) + 2 * int(command->isPaused()));
            add(command->calls.lines().size());
        }
        events << event;
    }

    int depth = 0;
    TestData records[3] = {TestData(u"A"_s), TestData(u"a"_s), TestData(u"A"_s)};
    QList<QSharedPointer<TestCommand>> commands;
    Queue queue;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const LogRecorder silence;
    const Input input(data, size);
    World<TestQueue> library(input);
    World<Model> model(input);
    while (!library.input.isAtEnd()) {
        library.operate();
        model.operate();
        check(std::exchange(library.events, {}), std::exchange(model.events, {}));
    }
    return 0;
}

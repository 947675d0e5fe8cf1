// Aims at: src/commands/CommandQueue.cpp src/commands/CommandScheduler.cpp
#include "../support/LogRecorder.h"
#include "../support/TestCommand.h"
#include "Fuzz.h"

#include <deque>

// A queue and a model of its rules, on one thread and driven by the same bytes: operations of a client, and more of
// them within slots and hooks. Both have to show the same events and, at each event, the same state.

using namespace Qt::StringLiterals;

namespace {
/** Receives the events of a queue with the record of their command. */
using Listener = std::function<void(const QString &event, const void *data)>;

/** A command and its record. */
struct ModelCommand
{
    ModelCommand *getCommandData() { return this; }
    QString getReference() const { return reference; }
    CommandData::Status getStatus() const { return status; }
    int getErrorCode() const { return errorCode; }
    bool isPaused() const { return paused; }
    bool isCancelled() const { return cancelled; }
    void execute() { set(paused, false, u"execute"_s); }
    void cancel() { set(cancelled, true, u"cancel"_s); }
    void pause() { set(paused, true, u"pause"_s); }
    void resume() { set(paused, false, u"resume"_s); }
    void setStatus(CommandData::Status newStatus)
    {
        if (status != newStatus) {
            set(status, newStatus, u"status"_s);
        }
    }
    void setError(int code)
    {
        setStatus(CommandData::ERR);
        set(errorCode, code, u"error"_s);
    }
    bool isFinished()
    {
        happen(u"isFinished"_s);
        return finished;
    }
    void happen(const QString &event) { listener(event, this); }
    template <typename T>
    void set(T &field, T value, const QString &event)
    {
        field = value;
        happen(event);
    }

    QString reference;
    Listener listener;
    bool startable = true;
    bool finished = true;
    CommandData::Status status = CommandData::OTHER;
    int errorCode = 0;
    bool paused = false;
    bool cancelled = false;
};

/** The rules in plain words. */
class Model
{
public:
    using CommandPointer = QSharedPointer<ModelCommand>;

    explicit Model(const Listener &listener)
        : listener(listener)
    {
    }
    CommandPointer make(const QString &reference) { return CommandPointer::create(ModelCommand{reference, listener}); }

    void addCommand(const CommandPointer &command)
    {
        if (command->getStatus() != CommandData::REQUIRE_USER_ACTION) {
            command->setStatus(CommandData::QUEUEING);
        }
        commands.append(command);
        command->happen(u"added"_s);
    }
    void cancelCommand(const CommandPointer &command)
    {
        command->cancel();
        if (command != current) {
            end(command, CommandData::CANCELLED);
        }
    }
    void cancelCommandByReference(const QString &reference)
    {
        for (const CommandPointer &command : QList(commands)) {
            if (command->getReference() == reference) {
                return cancelCommand(command);
            }
        }
    }
    void removeCommand(const CommandPointer &command)
    {
        commands.removeOne(command);
        command->happen(u"removed"_s);
    }
    void pause()
    {
        paused = true;
        if (current) {
            current->pause();
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
        first->happen(u"run begins"_s);
        while (getNextCommandThatCanBeStarted() && !paused) {
            startNextCommand();
        }
        processing = false;
        first->happen(u"run ends"_s);
    }
    void startNextCommand()
    {
        if (paused) {
            return;
        }
        current = getNextCommandThatCanBeStarted();
        if (!current) {
            warnings.append(u"1 default there are no commands left to process"_s);
        } else if (current->getStatus() == CommandData::REQUIRE_USER_ACTION) {
            paused = true;
            current->happen(u"awaiting"_s);
            processing = false;
        } else {
            run(current);
        }
        current.reset();
    }

    CommandPointer getNextCommandThatCanBeStarted() const
    {
        const auto found =
            std::find_if(commands.begin(), commands.end(), [](const auto &command) { return command->startable; });
        return found == commands.end() ? nullptr : *found;
    }
    bool hasCommand(ModelCommand *wanted) const
    {
        return std::any_of(commands.begin(), commands.end(), [wanted](const auto &command) {
            return command->getReference() == wanted->getReference();
        });
    }
    QList<CommandPointer> getCommands() const { return commands; }
    bool isPaused() const { return paused; }
    bool isProcessing() const { return processing; }
    bool isActive() const { return !paused && !commands.isEmpty(); }

    QStringList warnings;

private:
    void run(const CommandPointer &command)
    {
        command->setStatus(CommandData::PROCESSING);
        command->execute();
        if (command->isFinished() && command->getStatus() != CommandData::ERR) {
            return end(command, CommandData::FINISHED);
        }
        if (command->getStatus() == CommandData::ERR && !command->isCancelled()) {
            return removeCommand(command);
        }
        if (!command->isCancelled()) {
            command->setStatus(CommandData::QUEUEING);
        }
        if (command->isCancelled()) { // by now
            end(command, CommandData::CANCELLED);
        }
    }
    void end(const CommandPointer &command, CommandData::Status status)
    {
        command->setStatus(status);
        removeCommand(command);
    }

    const Listener listener;
    QList<CommandPointer> commands;
    CommandPointer current;
    bool paused = false;
    bool processing = false;
};

class Library : public TestQueue
{
public:
    using CommandPointer = QSharedPointer<TestCommand>;

    explicit Library(const Listener &listener)
        : listener(listener)
    {
        follow(this, &CommandQueue::commandRemoved, u"removed"_s);
        follow(this, &CommandQueue::awaitingUserAction, u"awaiting"_s);
        follow(this, &CommandQueue::commandStarted, u"run begins"_s);
        follow(this, &CommandQueue::commandFinished, u"run ends"_s);
        connect(this, &CommandQueue::commandAdded, [listener](const QSharedPointer<Command> &command) {
            listener(u"added"_s, command->getCommandData());
        });
    }
    CommandPointer make(const QString &reference)
    {
        Item &item = items.emplace_back(reference);
        follow(&item.data, &CommandData::statusChanged, u"status"_s);
        item.command->callHook = [this, &item](const QString &call) { listener(call, &item.data); };
        return item.command;
    }

private:
    template <typename Sender, typename Signal>
    void follow(const Sender *sender, Signal signal, const QString &event)
    {
        connect(sender, signal, [this, event](CommandData *data) { listener(event, data); });
    }

    const Listener listener;
    std::deque<Item> items;
};

/** A queue, its commands, and the operations that the bytes of an input choose. */
template <typename Queue>
class World
{
public:
    explicit World(const Input &input)
        : input(input)
        , queue([this](const QString &event, const void *data) { happen(event, data); })
        , commands({queue.make(u"A"_s), queue.make(u"a"_s), queue.make(u"A"_s)})
    {
    }

    /** Does what the next bytes say; drives the queue only from outside. */
    void operate()
    {
        const auto &[name, operation] = operations[input.below(depth == 0 ? 14 : 11)];
        const Pointer command = input.oneOf(commands);
        const int number = input.below(9);
        note(QString::fromLatin1(name), command);
        operation(queue, command, number);
    }

    Input input;
    QStringList events; // each with the state that it finds
    Queue queue;

private:
    using Pointer = typename Queue::CommandPointer;
    using Operation = void (*)(Queue &queue, const Pointer &command, int number);

    static constexpr std::pair<const char *, Operation> operations[] = {{"nothing", [](auto &, auto &, int) {}},
        {"addCommand", [](auto &called, auto &command, int) { called.addCommand(command); }},
        {"cancelCommand", [](auto &called, auto &command, int) { called.cancelCommand(command); }},
        {"cancelCommandByReference",
            [](auto &called, auto &command, int) {
                called.cancelCommandByReference(command->getCommandData()->getReference());
            }},
        {"removeCommand", [](auto &called, auto &command, int) { called.removeCommand(command); }},
        {"pause", [](auto &called, auto &, int) { called.pause(); }},
        {"resume", [](auto &, auto &command, int) { command->resume(); }},
        {"setError", [](auto &, auto &command, int number) { command->setError(number - 1); }},
        {"setStatus",
            [](auto &, auto &command, int number) {
                command->getCommandData()->setStatus(static_cast<CommandData::Status>(number));
            }},
        {"setStatus REQUIRE_USER_ACTION",
            [](auto &, auto &command, int) { command->getCommandData()->setStatus(CommandData::REQUIRE_USER_ACTION); }},
        {"startable or not", [](auto &, auto &command, int) { command->startable = !command->startable; }},
        {"startNextCommand", [](auto &called, auto &, int) { called.startNextCommand(); }},
        {"process", [](auto &called, auto &, int) { called.process(); }},
        {"process", [](auto &called, auto &, int) { called.process(); }}};

    void happen(const QString &event, const void *data)
    {
        const Pointer command = *std::find_if(commands.begin(), commands.end(), [data](const Pointer &candidate) {
            return candidate->getCommandData() == data;
        });
        note(u"-> "_s + event, command);
        if (event == u"execute") {
            command->finished = !input.oneIn(3);
        }
        if (++depth < 8) {
            operate();
        }
        --depth;
    }

    /** Notes an event with what can be seen of the queue and the commands. */
    void note(const QString &event, const Pointer &command)
    {
        const auto nameOf = [this](const auto &named) { return named ? u"ABC"_s.at(commands.indexOf(named)) : u'-'; };
        QString text = QString(4 * depth, u' ') + event + u' ' + nameOf(command) + u':';
        const auto add = [&text](bool holds, const char *word) { text += holds ? QLatin1StringView(word) : ""_L1; };
        add(queue.isPaused(), " paused");
        add(queue.isProcessing(), " processing");
        add(queue.isActive(), " active");
        text += u", next "_s + nameOf(queue.getNextCommandThatCanBeStarted()) + u", listed "_s;
        for (const auto &listed : queue.getCommands()) {
            text += nameOf(listed);
        }
        for (const Pointer &shown : commands) {
            text += u", "_s + nameOf(shown) + u" status "_s + QString::number(shown->getCommandData()->getStatus())
                + u" code "_s + QString::number(shown->getCommandData()->getErrorCode());
            add(queue.hasCommand(shown.data()), " found");
            add(shown->isCancelled(), " cancelled");
            add(shown->isPaused(), " paused");
        }
        events.append(text);
    }

    int depth = 0;
    const QList<Pointer> commands;
};

/** Ends the process with the step, the last events that agree and the first that differs. */
void compare(int step, const QStringList &library, const QStringList &model)
{
    if (library == model) {
        return;
    }
    const auto [is, shouldBe] = std::mismatch(library.begin(), library.end(), model.begin(), model.end());
    const auto textOf = [](auto event, auto end) { return event == end ? u"(nothing)"_s : *event; };
    const QString message = u"step %1\n%2\n  is\n%3\n  should be\n%4"_s.arg(step).arg(
        QStringList(library.begin(), is).mid(std::max<qsizetype>(is - library.begin() - 8, 0)).join(u'\n'),
        textOf(is, library.end()),
        textOf(shouldBe, model.end()));
    std::fprintf(stderr, "%s\n", qPrintable(message));
    std::abort();
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const LogRecorder recorder;
    const Input input(data, size);
    World<Library> library(input);
    World<Model> model(input);
    for (int step = 1; !library.input.isAtEnd(); ++step) {
        library.operate();
        model.operate();
        compare(step, std::exchange(library.events, {}), std::exchange(model.events, {}));
        compare(step, LogRecorder::getLines(), model.queue.warnings);
    }
    return 0;
}

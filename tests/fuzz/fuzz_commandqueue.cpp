// Aims at: src/commands/CommandQueue.cpp src/commands/CommandScheduler.cpp
#include "../support/LogRecorder.h"
#include "../support/TestCommand.h"
#include "Fuzz.h"

#include <QMessageLogger>

// A queue and a model of its rules, on one thread and driven by the same bytes: operations of a client, and more of
// them within slots and hooks. Both have to show the same events and, at each event, the same state.

using namespace Qt::StringLiterals;

namespace {
using CommandPointer = QSharedPointer<Command>;

// The rules in plain words.
class Model
{
public:
    explicit Model(const Listener &listener)
        : listener(listener)
    {
    }

    void addCommand(const CommandPointer &command)
    {
        if (command->getCommandData()->getStatus() != CommandData::REQUIRE_USER_ACTION) {
            command->getCommandData()->setStatus(CommandData::QUEUEING);
        }
        commands.append(command);
        listener(u"added"_s, command->getCommandData());
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
            if (command->getCommandData()->getReference() == reference) {
                return cancelCommand(command);
            }
        }
    }
    void removeCommand(const CommandPointer &command)
    {
        commands.removeOne(command);
        listener(u"removed"_s, command->getCommandData());
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
        listener(u"begin"_s, first->getCommandData());
        while (getNextCommandThatCanBeStarted() && !paused) {
            startNextCommand();
        }
        processing = false;
        listener(u"end"_s, first->getCommandData());
    }
    void startNextCommand()
    {
        if (paused) {
            return;
        }
        current = getNextCommandThatCanBeStarted();
        if (!current) {
            QMessageLogger(nullptr, 0, nullptr).warning("there are no commands left to process");
        } else if (current->getCommandData()->getStatus() == CommandData::REQUIRE_USER_ACTION) {
            paused = true;
            listener(u"awaiting"_s, current->getCommandData());
            processing = false;
        } else {
            run(current);
        }
        current.reset();
    }

    CommandPointer getNextCommandThatCanBeStarted() const
    {
        const auto canBeStarted = [](const CommandPointer &command) { return command->canBeStarted(); };
        const auto found = std::find_if(commands.begin(), commands.end(), canBeStarted);
        return found == commands.end() ? nullptr : *found;
    }
    bool hasCommand(Command *wanted) const
    {
        return std::any_of(commands.begin(), commands.end(), [wanted](const CommandPointer &command) {
            return command->getCommandData()->getReference() == wanted->getCommandData()->getReference();
        });
    }
    QList<CommandPointer> getCommands() const { return commands; }
    bool isPaused() const { return paused; }
    bool isProcessing() const { return processing; }
    bool isActive() const { return !paused && !commands.isEmpty(); }

private:
    void run(const CommandPointer &command)
    {
        CommandData *const data = command->getCommandData();
        data->setStatus(CommandData::PROCESSING);
        command->execute();
        if (command->isFinished() && data->getStatus() != CommandData::ERR) {
            return end(command, CommandData::FINISHED);
        }
        if (data->getStatus() == CommandData::ERR && !command->isCancelled()) {
            return removeCommand(command);
        }
        if (!command->isCancelled()) {
            data->setStatus(CommandData::QUEUEING);
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

    const Listener listener;
    QList<CommandPointer> commands;
    CommandPointer current;
    bool paused = false;
    bool processing = false;
};

class Library : public TestQueue
{
public:
    explicit Library(const Listener &listener) { follow(*this, listener); }
};

// A queue, its commands, and the operations that the bytes of an input choose.
template <typename Queue>
class World
{
public:
    explicit World(const Input &input)
        : input(input)
        , queue([this](const QString &event, const CommandData *data) { happen(event, data); })
    {
        for (Item &item : items) {
            const auto listen = [this, &item](const QString &event) { happen(event, &item.data); };
            item.command->callHook = listen;
            QObject::connect(&item.data, &CommandData::statusChanged, [listen] { listen(u"status"_s); });
        }
    }

    // Does what the next bytes say; returns the events, each with the state that it finds, and the warnings.
    QStringList step()
    {
        const LogRecorder recorder;
        operate();
        return std::exchange(events, {}) + LogRecorder::getLines();
    }

    Input input;

private:
    void operate()
    {
        const int number = input.below(depth == 0 ? 14 : 11); // only from outside may it drive the queue
        Item &item = items[input.below(3)];
        const int value = input.below(9);
        const std::pair<const char *, std::function<void()>> operations[] = {
            {"nothing", [] {}},
            {"addCommand", [&] { queue.addCommand(item.command); }},
            {"cancelCommand", [&] { queue.cancelCommand(item.command); }},
            {"cancelCommandByReference", [&] { queue.cancelCommandByReference(item.data.getReference()); }},
            {"removeCommand", [&] { queue.removeCommand(item.command); }},
            {"pause", [&] { queue.pause(); }},
            {"resume", [&] { item.command->resume(); }},
            {"setError", [&] { item.command->setError(value - 1); }},
            {"setStatus", [&] { item.data.setStatus(CommandData::Status(value)); }},
            {"require user action", [&] { item.data.setStatus(CommandData::REQUIRE_USER_ACTION); }},
            {"change startable", [&] { item.command->startable = !item.command->startable; }},
            {"startNextCommand", [&] { queue.startNextCommand(); }},
            {"process", [&] { queue.process(); }},
            {"process", [&] { queue.process(); }},
        };
        const auto &[name, operation] = operations[number];
        note(QString::fromLatin1(name), &item.data);
        operation();
    }

    void happen(const QString &event, const CommandData *data)
    {
        note(u"-> "_s + event, data);
        if (event == u"execute") {
            items[indexOf(data)].command->finished = !input.oneIn(3);
        }
        if (++depth < 8) {
            operate();
        }
        --depth;
    }

    // Notes an event with what can be seen of the queue and the commands.
    void note(const QString &event, const CommandData *data)
    {
        const CommandPointer next = queue.getNextCommandThatCanBeStarted();
        QString text = QString(4 * depth, u' ') + event
            + u" of %1; next %2; list "_s.arg(nameOf(data)).arg(next ? nameOf(next->getCommandData()) : u'-');
        for (const CommandPointer &listed : queue.getCommands()) {
            text += nameOf(listed->getCommandData());
        }
        const auto flag = [&text](
                              const char *name, bool isSet) { text += isSet ? QLatin1String(name) : QLatin1String(); };
        flag(" paused", queue.isPaused());
        flag(" processing", queue.isProcessing());
        flag(" active", queue.isActive());
        for (Item &item : items) {
            text += u"; "_s + nameOf(&item.data) + u' ' + item.data.getStatusAsString() + u' '
                + QString::number(item.data.getErrorCode());
            flag(" listed", queue.hasCommand(item.command.data()));
            flag(" cancelled", item.command->isCancelled());
            flag(" paused", item.command->isPaused());
        }
        events.append(text);
    }
    QChar nameOf(const CommandData *data) const { return QChar(u'A' + static_cast<int>(indexOf(data))); }
    std::ptrdiff_t indexOf(const CommandData *data) const
    {
        const auto isOf = [data](const Item &item) { return &item.data == data; };
        return std::find_if(std::begin(items), std::end(items), isOf) - std::begin(items);
    }

    int depth = 0;
    QStringList events;
    Item items[3] = {Item(u"A"_s), Item(u"a"_s), Item(u"A"_s)};
    Queue queue;
};
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Input input(data, size);
    World<Library> library(input);
    World<Model> model(input);
    for (int step = 1; !library.input.isAtEnd(); ++step) {
        const QStringList actual = library.step();
        const QStringList expected = model.step();
        if (actual != expected) {
            const auto agreed = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end()).first;
            const qsizetype index = agreed - actual.begin();
            const qsizetype from = std::max<qsizetype>(index - 8, 0);
            qCritical().noquote() << "step" << step << u'\n' + actual.mid(from, index - from).join(u'\n')
                                  << "\nqueue:" << actual.value(index) << "\nmodel:" << expected.value(index);
            std::abort();
        }
    }
    return 0;
}

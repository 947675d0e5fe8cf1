// Holds one command back while the others run, and resumes it by its title.

#include "FunctionCommand.h"

#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QTextStream>

#include <algorithm>
#include <memory>
#include <vector>

//! [recipe]
// A command that cannot be started while it is paused. The queue skips it and runs the commands after it.
class HoldableCommand : public FunctionCommand
{
public:
    using FunctionCommand::FunctionCommand;
    bool canBeStarted() const override { return !isPaused(); }
};

// Resumes the first listed command with this title; returns whether there is one. Several commands may have the same
// title; to resume one of them, compare references.
bool resumeByTitle(CommandQueueThread &worker, const QString &title)
{
    const auto commands = worker.getCommandQueue().getCommands(); // a copy that keeps the commands alive
    const auto hasTitle = [&title](const auto &command) { return command->getCommandData()->getTitle() == title; };
    const auto found = std::find_if(commands.cbegin(), commands.cend(), hasTitle);
    if (found == commands.cend()) {
        return false;
    }
    (*found)->resume();
    worker.restart(); // the queue calls canBeStarted() again; also ends a pause of the queue
    return true;
}
//! [recipe]

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    std::vector<std::unique_ptr<TitledData>> records;
    for (const auto *title : {"first", "held", "last"}) {
        records.push_back(std::make_unique<TitledData>(QString::fromLatin1(title)));
    }

    CommandQueueThread worker;
    QObject::connect(&worker.getCommandQueue(), &CommandQueue::commandRemoved, &application, [&](CommandData *data) {
        out << data->getTitle() << Qt::endl;
        if (data == records[2].get()) {
            out << "resumed: " << resumeByTitle(worker, QStringLiteral("held")) << Qt::endl;
        } else if (data == records[1].get()) {
            out << "resumed again: " << resumeByTitle(worker, QStringLiteral("held")) << Qt::endl;
            application.quit();
        }
    });
    worker.start();
    for (const auto &record : records) {
        const auto command = QSharedPointer<HoldableCommand>::create(record.get(), [](Command &) {});
        if (record == records[1]) {
            command->pause();
        }
        worker.getCommandQueue().addCommand(command);
    }
    const int result = application.exec();

    worker.stop();
    worker.wait();
    return result;
}

// Follows commands whose records are destroyed on the worker, from another thread.

#include "FunctionCommand.h"

#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QTextStream>

#include <functional>

//! [recipe]
// The data that a listener shows, copied at the time of the signal.
struct CommandUpdate
{
    QString title;
    CommandData::Status status;
    QString statusText;
};

// Calls `receive` on the thread of `receiver` for each change of status. The slot is connected directly: it runs while
// the record exists, and only the copy is posted. `receiver` must outlive the worker.
void follow(CommandData &data, QObject &receiver, std::function<void(const CommandUpdate &)> receive)
{
    const auto post = [&receiver, receive = std::move(receive)](CommandData *record) {
        const CommandUpdate update{record->getTitle(), record->getStatus(), record->getStatusAsString()};
        QMetaObject::invokeMethod(
            &receiver, [receive, update] { receive(update); }, Qt::QueuedConnection);
    };
    QObject::connect(&data, &CommandData::statusChanged, &receiver, post, Qt::DirectConnection);
}

// A command that owns its record. No queued signal may name the record then: the worker may destroy both.
class SelfContainedCommand : public FunctionCommand
{
public:
    SelfContainedCommand(const QString &title, std::function<void(Command &)> work)
        : FunctionCommand(nullptr, std::move(work))
        , data(title)
    {
    }
    CommandData *getCommandData() override { return &data; }

private:
    TitledData data;
};
//! [recipe]

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QObject receiver; // created before the worker

    CommandQueueThread worker;
    worker.start();
    const auto fail = [](Command &command) { command.setError(1); };
    const auto command = QSharedPointer<SelfContainedCommand>::create(QStringLiteral("work"), fail);
    follow(*command->getCommandData(), receiver, [&](const CommandUpdate &update) {
        out << update.title << ": " << update.statusText << Qt::endl;
        if (update.status == CommandData::ERR) {
            application.quit();
        }
    });
    worker.getCommandQueue().addCommand(command);
    const int result = application.exec();

    worker.stop();
    worker.wait();
    return result;
}

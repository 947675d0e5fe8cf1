// Saves three documents on a worker: one first needs an answer from the user, and one fails.

//! [example]
#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QTextStream>

#include <cstddef>
#include <memory>
#include <vector>

class SaveData : public CommandData
{
public:
    SaveData(const QString &title, bool isOnFullDisk)
        : CommandData(QString(), false)
        , isOnFullDisk(isOnFullDisk)
        , title(title)
    {
    }
    QString getDescription() const override { return QStringLiteral("saving %1").arg(title); }
    QString getTitle() const override { return title; }
    QString getTypeName() const override { return QStringLiteral("save"); }

    const bool isOnFullDisk;

private:
    const QString title;
};

class SaveCommand : public Command
{
public:
    explicit SaveCommand(SaveData *data)
        : Command(data)
        , data(data)
    {
    }
    bool canBeStarted() const override { return true; }

protected:
    void handleExecute() override // on the worker, without the queue's lock
    {
        if (data->isOnFullDisk) {
            data->setErrorCode(28); // before the message: the log line contains the code
            data->setErrorMessage(QStringLiteral("no space left"));
            setError(28); // last: slots connected directly to statusChanged find code and message
        }
    }

private:
    SaveData *data;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);

    // The records: created before the worker and destroyed after it.
    std::vector<std::unique_ptr<SaveData>> records;
    records.push_back(std::make_unique<SaveData>(QStringLiteral("letter"), false));
    records.push_back(std::make_unique<SaveData>(QStringLiteral("report"), false));
    records.push_back(std::make_unique<SaveData>(QStringLiteral("sketch"), true));
    records[1]->setStatus(CommandData::REQUIRE_USER_ACTION); // the file exists already

    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();
    std::size_t waiting = records.size();

    // With the application as context, the slots run on this thread, after the queue has continued or paused.
    QObject::connect(&queue, &CommandQueue::commandRemoved, &application, [&](CommandData *data) {
        out << data->getTitle() << ": " << data->getStatusAsString();
        out << (data->getErrorCode() == 0 ? QString() : QStringLiteral(", ") + data->getErrorMessage()) << Qt::endl;
        if (--waiting == 0) {
            application.quit();
        }
    });
    QObject::connect(&queue, &CommandQueue::awaitingUserAction, &application, [&](CommandData *data) {
        // An added command makes the waiting queue emit this again, perhaps after the answer.
        if (data->getStatus() == CommandData::REQUIRE_USER_ACTION) {
            out << data->getTitle() << ": overwrite? yes" << Qt::endl;
            data->setStatus(CommandData::QUEUEING);
        }
        worker.restart(); // in any case: each awaitingUserAction pauses the queue
    });

    worker.start();
    for (const auto &record : records) {
        queue.addCommand(QSharedPointer<SaveCommand>::create(record.get()));
    }
    const int result = application.exec();

    worker.stop(); // 1. cancels what waits
    worker.wait(); // 2. the running command ends, then the thread
    return result; // 3. the worker is destroyed, then the records
}
//! [example]

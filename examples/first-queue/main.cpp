#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QTextStream>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <vector>

// The record of a sum. Listeners read it, on any thread.
class SumData : public CommandData
{
public:
    explicit SumData(int last)
        : CommandData(QString(), false)
        , last(last)
    {
    }
    QString getDescription() const override { return QStringLiteral("adding up the numbers to %1").arg(last); }
    QString getTitle() const override { return QStringLiteral("sum to %1").arg(last); }
    QString getTypeName() const override { return QStringLiteral("sum"); }

    const int last;
    std::atomic<int> percent = 0;
    std::atomic<qint64> sum = 0; // of all numbers; set when the command finishes
};

// The work.
class SumCommand : public Command
{
public:
    explicit SumCommand(SumData *data)
        : Command(data)
        , data(data)
    {
    }
    bool canBeStarted() const override { return true; }
    bool isFinished() override { return isDone; } // false after a cancel: the default, true, would mean FINISHED

protected:
    void handleExecute() override // on the worker
    {
        isDone = false;
        qint64 sum = 0;
        for (int number = 1; number <= data->last; ++number) {
            if (isCancelled()) {
                return;
            }
            sum += number;
            if (number % 20000000 == 0) {
                data->percent = static_cast<int>(100LL * number / data->last);
                Q_EMIT data->progressUpdated(data);
            }
        }
        data->sum = sum;
        isDone = true;
    }

private:
    SumData *data;
    bool isDone = false; // used on the worker only
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);

    // Created before the worker and destroyed after it: a signal may arrive after its command is destroyed.
    std::vector<std::unique_ptr<SumData>> records;
    for (const int last : {10, 1000, 2000000000}) {
        records.push_back(std::make_unique<SumData>(last));
    }

    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();

    // With the application as context, the slots run on this thread.
    QObject::connect(records.back().get(), &CommandData::progressUpdated, &application, [&](CommandData *data) {
        out << data->getTitle() << ": " << static_cast<SumData *>(data)->percent << " %" << Qt::endl;
        queue.cancelCommandByReference(data->getReference()); // the last sum is not needed after all
    });
    std::size_t remaining = records.size();
    QObject::connect(&queue, &CommandQueue::commandRemoved, &application, [&](CommandData *data) {
        out << data->getTitle() << ": " << data->getStatusAsString();
        if (data->getStatus() == CommandData::FINISHED) {
            out << ", " << static_cast<SumData *>(data)->sum;
        }
        out << Qt::endl;
        if (--remaining == 0) {
            application.quit(); // the queue is drained
        }
    });

    worker.start();
    for (const auto &record : records) {
        queue.addCommand(QSharedPointer<SumCommand>::create(record.get()));
    }
    application.exec();

    // The end of a worker has three steps: stop, wait, destroy.
    worker.stop();
    worker.wait();
    if (out.status() != QTextStream::Ok) {
        QTextStream(stderr) << "first-queue: standard output cannot be written" << Qt::endl;
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

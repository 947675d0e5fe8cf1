#include <commands/CommandQueueThread.h>

#include <QCoreApplication>
#include <QTextStream>

#include <memory>
#include <vector>

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
    std::atomic<qint64> sum = 0;
};

class SumCommand : public Command
{
public:
    explicit SumCommand(SumData *data)
        : Command(data)
        , data(data)
    {
    }
    bool canBeStarted() const override { return true; }

protected:
    void handleExecute() override // on the worker
    {
        for (int number = 1; number <= data->last && !isCancelled(); ++number) {
            data->sum += number;
        }
    }

private:
    SumData *data;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);

    // Made before the worker and destroyed after it: a signal can arrive here when its command is long gone.
    std::vector<std::unique_ptr<SumData>> records;
    for (const int last : {10, 1000, 1000000}) {
        records.push_back(std::make_unique<SumData>(last));
    }

    CommandQueueThread worker;
    CommandQueue &queue = worker.getCommandQueue();
    std::size_t waiting = records.size();
    QObject::connect(&queue, &CommandQueue::commandRemoved, &application, [&](CommandData *data) { // on this thread
        QTextStream(stdout) << data->getTitle() << ": " << static_cast<SumData *>(data)->sum << ", "
                            << data->getStatusAsString() << Qt::endl;
        if (--waiting == 0) {
            application.quit();
        }
    });

    worker.start();
    for (const auto &record : records) {
        queue.addCommand(QSharedPointer<SumCommand>::create(record.get()));
    }
    const int result = application.exec();

    worker.stop();
    worker.wait();
    return result;
}

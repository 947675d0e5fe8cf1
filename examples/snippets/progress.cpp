// Shows the progress of a command and of all commands.

#include "FunctionCommand.h"

#include <commands/CommandQueue.h>

#include <QTextStream>

#include <atomic>
#include <memory>
#include <vector>

//! [recipe]
// The record of work in equal steps. The worker counts them; any thread may read the count.
class SteppedData : public TitledData
{
public:
    SteppedData(const QString &title, int stepCount)
        : TitledData(title)
        , stepCount(stepCount)
    {
    }

    void begin() { finishedSteps = 0; } // a command may be executed more than once
    void finishStep()
    {
        ++finishedSteps;
        Q_EMIT progressUpdated(this);
    }
    int getPercent() const { return 100 * finishedSteps / stepCount; }

    // A failed or cancelled command has no steps left, even if it has not finished them all.
    int getSettledSteps() const
    {
        const Status status = getStatus();
        return status == FINISHED || status == CANCELLED || status == ERR ? stepCount : finishedSteps.load();
    }

    const int stepCount;

private:
    std::atomic<int> finishedSteps = 0;
};

// The progress of all commands, waiting, running or removed: the records outlive them.
int getPercentOfAll(const std::vector<std::unique_ptr<SteppedData>> &records)
{
    int settledSteps = 0;
    int stepCount = 0;
    for (const auto &record : records) {
        settledSteps += record->getSettledSteps();
        stepCount += record->stepCount;
    }
    return stepCount == 0 ? 100 : 100 * settledSteps / stepCount;
}
//! [recipe]

int main()
{
    QTextStream out(stdout);
    std::vector<std::unique_ptr<SteppedData>> records;
    records.push_back(std::make_unique<SteppedData>(QStringLiteral("scan"), 3));
    records.push_back(std::make_unique<SteppedData>(QStringLiteral("send"), 2));

    CommandQueue queue;
    //! [connect]
    // In a window, the context is the object that paints, and the slot runs on its thread.
    const auto show = [&](CommandData *data) {
        out << data->getTitle() << ' ' << static_cast<SteppedData *>(data)->getPercent() << " %, all "
            << getPercentOfAll(records) << " %\n";
    };
    for (const auto &record : records) {
        QObject::connect(record.get(), &CommandData::progressUpdated, &queue, show);
    }
    QObject::connect(&queue, &CommandQueue::commandRemoved, &queue, show);
    //! [connect]

    queue.addCommand(QSharedPointer<FunctionCommand>::create(records[0].get(), [&records](Command &command) {
        records[0]->begin();
        records[0]->finishStep();
        command.setError(1);
    }));
    queue.addCommand(QSharedPointer<FunctionCommand>::create(records[1].get(), [&records](Command &) {
        records[1]->begin();
        records[1]->finishStep();
        records[1]->finishStep();
    }));
    queue.process(); // as a CommandQueueThread does on its worker
}

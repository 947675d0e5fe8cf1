// Shows how far a command is, and how far the whole queue.

#include "FunctionCommand.h"

#include <commands/CommandQueue.h>

#include <QTextStream>

#include <atomic>
#include <memory>
#include <vector>

//! [recipe]
// The record of work in equal steps. The worker counts, and any thread may read.
class SteppedData : public TitledData
{
public:
    SteppedData(const QString &title, int stepCount)
        : TitledData(title)
        , stepCount(stepCount)
    {
    }

    void finishStep()
    {
        ++finishedSteps;
        Q_EMIT progressUpdated(this);
    }
    int getPercent() const { return 100 * finishedSteps / stepCount; }

    // What failed or was cancelled has no steps left to do, however far it came.
    int getSettledSteps() const
    {
        const Status status = getStatus();
        return status == FINISHED || status == CANCELLED || status == ERR ? stepCount : finishedSteps.load();
    }

    const int stepCount;

private:
    std::atomic<int> finishedSteps = 0;
};

// The progress of all commands that were added, be they waiting, running or gone: their records outlive them.
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
    // On a window, the context is the object that paints: its thread then reads the latest counts, at its own pace.
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
        records[0]->finishStep();
        command.setError(1);
    }));
    queue.addCommand(QSharedPointer<FunctionCommand>::create(records[1].get(), [&records](Command &) {
        records[1]->finishStep();
        records[1]->finishStep();
    }));
    queue.process(); // as a CommandQueueThread does on its worker
}

#include "QueueController.h"

#include "DigestCommand.h"
#include "DigestCommandData.h"
#include "SaveCommand.h"
#include "SaveCommandData.h"

namespace {

bool hasEnded(const CommandData &record)
{
    const CommandData::Status status = record.getStatus();
    return status == CommandData::FINISHED || status == CommandData::CANCELLED || status == CommandData::ERR;
}

} // namespace

QueueController::QueueController()
{
    connect(&model, &CommandListModel::refreshed, this, &QueueController::stateChanged);
    startWorker();
}

QueueController::~QueueController()
{
    worker->stop();
    worker->wait();
}

CommandListModel &QueueController::getModel()
{
    return model;
}

QueueController::State QueueController::getState() const
{
    if (isStopping) {
        return State::Stopping;
    }
    if (awaitingRecord) {
        return State::AwaitingAnswer;
    }
    if (isHeld) {
        return State::Paused;
    }
    return model.getListedCount() > 0 ? State::Running : State::Idle;
}

const SaveCommandData *QueueController::getAwaitingRecord() const
{
    return awaitingRecord;
}

void QueueController::digest(const std::vector<ListedFile> &files)
{
    std::vector<std::unique_ptr<CommandData>> records;
    std::vector<QSharedPointer<Command>> commands;
    QSet<QString> paths;
    for (const ListedFile &file : files) {
        if (model.isListed(file.path) || paths.contains(file.path)) {
            continue;
        }
        paths.insert(file.path);
        auto record = std::make_unique<DigestCommandData>(file.path, file.name);
        commands.push_back(QSharedPointer<DigestCommand>::create(record.get()));
        records.push_back(std::move(record));
    }
    add(commands, std::move(records));
}

void QueueController::saveDigests(const QString &target)
{
    std::vector<const DigestCommandData *> digests;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (const auto *const record = qobject_cast<const DigestCommandData *>(model.getRecord(row))) {
            digests.push_back(record);
        }
    }
    auto record = std::make_unique<SaveCommandData>(target);
    const std::vector<QSharedPointer<Command>> commands{
        QSharedPointer<SaveCommand>::create(record.get(), std::move(digests))};
    std::vector<std::unique_ptr<CommandData>> records;
    records.push_back(std::move(record));
    add(commands, std::move(records));
}

void QueueController::add(
    const std::vector<QSharedPointer<Command>> &commands, std::vector<std::unique_ptr<CommandData>> records)
{
    model.append(std::move(records)); // ahead of the commands, whose signals look for their rows
    for (const QSharedPointer<Command> &command : commands) {
        queue().addCommand(command);
        // An added command wakes the worker, which ends a pause; a pause right after it voids that.
        if (isHeld) {
            queue().pause();
        }
    }
    Q_EMIT stateChanged();
}

void QueueController::pause()
{
    isHeld = true;
    queue().pause();
    Q_EMIT stateChanged();
}

void QueueController::goOn()
{
    isHeld = false;
    worker->restart();
    Q_EMIT stateChanged();
}

void QueueController::cancel(const std::vector<const CommandData *> &records)
{
    for (const CommandData *const record : records) {
        // What has ended need not be looked for in the whole list. By reference and not by pointer: a command that ends
        // just now is not listed any more and stays as it ended.
        if (!hasEnded(*record)) {
            queue().cancelCommandByReference(record->getReference());
        }
    }
    if (awaitingRecord && awaitingRecord->getStatus() == CommandData::CANCELLED) {
        awaitingRecord = nullptr;
        restartUnlessHeld(); // the queue would stay paused behind the question
    }
    Q_EMIT stateChanged();
}

void QueueController::answer(bool overwrite)
{
    if (!awaitingRecord) {
        return;
    }
    if (!overwrite) {
        cancel({awaitingRecord});
        return;
    }
    std::exchange(awaitingRecord, nullptr)->allowOverwriting();
    restartUnlessHeld();
    Q_EMIT stateChanged();
}

void QueueController::stop()
{
    isStopping = true;
    isHeld = false;
    awaitingRecord = nullptr;
    worker->stop();
    Q_EMIT stateChanged();
}

void QueueController::startWorker()
{
    worker = std::make_unique<CommandQueueThread>();
    model.follow(queue());
    connect(&queue(), &CommandQueue::awaitingUserAction, this, &QueueController::awaitAnswer, Qt::QueuedConnection);
    connect(worker.get(), &QThread::finished, this, &QueueController::renewWorker, Qt::QueuedConnection);
    worker->start();
}

// A stop cannot be undone, so another worker takes the place of the stopped one. What its signals have reported stands
// ahead of this call in the event queue.
void QueueController::renewWorker()
{
    worker->wait();
    startWorker();
    isStopping = false;
    Q_EMIT stateChanged();
}

// A command that is added while the queue waits makes it ask again, so the question may be settled by now. It has
// paused the queue all the same, perhaps after the wake-up that came with the answer.
void QueueController::awaitAnswer(CommandData *record)
{
    if (isStopping) {
        return;
    }
    if (record->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        restartUnlessHeld();
        return;
    }
    awaitingRecord = qobject_cast<SaveCommandData *>(record);
    Q_EMIT stateChanged();
}

void QueueController::restartUnlessHeld()
{
    if (!isHeld) {
        worker->restart();
    }
}

CommandQueue &QueueController::queue() const
{
    return worker->getCommandQueue();
}

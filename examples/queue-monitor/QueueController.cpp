#include "QueueController.h"

#include "DigestCommand.h"
#include "DigestCommandData.h"
#include "SaveCommand.h"
#include "SaveCommandData.h"

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
    if (queue().isPaused()) {
        return State::Paused;
    }
    return model.getListedCount() > 0 ? State::Running : State::Idle;
}

const SaveCommandData *QueueController::getAwaitingRecord() const
{
    return awaitingRecord;
}

void QueueController::digest(const std::vector<File> &files)
{
    std::vector<std::unique_ptr<CommandData>> records;
    std::vector<QSharedPointer<Command>> commands;
    QSet<QString> paths;
    for (const File &file : files) {
        if (model.isListed(file.path) || paths.contains(file.path)) {
            continue;
        }
        paths.insert(file.path);
        auto record = std::make_unique<DigestCommandData>(file.path, file.title);
        commands.push_back(QSharedPointer<DigestCommand>::create(record.get()));
        records.push_back(std::move(record));
    }
    add(commands, std::move(records));
}

void QueueController::saveDigests(const QString &target)
{
    std::vector<const DigestCommandData *> digests;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (const auto *const digest = qobject_cast<const DigestCommandData *>(model.getRecord(row))) {
            digests.push_back(digest);
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
    const bool wasPaused = queue().isPaused();
    model.append(std::move(records)); // ahead of the commands, whose signals look for their rows
    for (const QSharedPointer<Command> &command : commands) {
        queue().addCommand(command);
    }
    // An added command wakes the worker, which ends a pause; a pause after it voids that.
    if (wasPaused) {
        queue().pause();
    }
    Q_EMIT stateChanged();
}

void QueueController::pause()
{
    queue().pause();
    Q_EMIT stateChanged();
}

void QueueController::goOn()
{
    worker->restart();
}

void QueueController::cancel(const QStringList &references)
{
    for (const QString &reference : references) {
        // By reference and not by pointer: a command that has just ended is not listed and stays as it ended.
        queue().cancelCommandByReference(reference);
    }
    if (awaitingRecord && awaitingRecord->getStatus() == CommandData::CANCELLED) {
        awaitingRecord = nullptr;
        worker->restart(); // the queue would stay paused behind the question
    }
    Q_EMIT stateChanged();
}

void QueueController::answer(bool overwrite)
{
    if (!awaitingRecord) {
        return;
    }
    if (!overwrite) {
        cancel({awaitingRecord->getReference()});
        return;
    }
    std::exchange(awaitingRecord, nullptr)->allowOverwriting();
    worker->restart();
    Q_EMIT stateChanged();
}

void QueueController::stop()
{
    isStopping = true;
    awaitingRecord = nullptr;
    worker->stop();
    Q_EMIT stateChanged();
}

void QueueController::startWorker()
{
    worker = std::make_unique<CommandQueueThread>();
    model.follow(queue());
    connect(&queue(), &CommandQueue::awaitingUserAction, this, &QueueController::awaitAnswer, Qt::QueuedConnection);
    // Without their record, which can be gone: these two come for the first command of a run, when all of it is over.
    connect(
        &queue(), &CommandQueue::commandStarted, this, [this] { Q_EMIT stateChanged(); }, Qt::QueuedConnection);
    connect(
        &queue(), &CommandQueue::commandFinished, this, [this] { Q_EMIT stateChanged(); }, Qt::QueuedConnection);
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

// The question may be settled by now; the record is there in any case.
void QueueController::awaitAnswer(CommandData *record)
{
    if (isStopping) {
        return;
    }
    if (record->getStatus() == CommandData::CANCELLED) {
        worker->restart(); // see cancel()
    }
    if (record->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        return;
    }
    awaitingRecord = qobject_cast<SaveCommandData *>(record);
    Q_EMIT stateChanged();
}

CommandQueue &QueueController::queue() const
{
    return worker->getCommandQueue();
}

#include "QueueController.h"

#include "DigestCommand.h"
#include "DigestCommandData.h"
#include "SaveCommand.h"
#include "SaveCommandData.h"

#include <QFileInfo>

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
    if (isHeld) {
        return State::Paused;
    }
    return model.getListedCount() > 0 ? State::Running : State::Idle;
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
        record->setTotalBytes(QFileInfo(file.path).size());
        commands.push_back(QSharedPointer<DigestCommand>::create(record.get()));
        records.push_back(std::move(record));
    }
    model.append(std::move(records)); // before the commands, whose signals look for their rows
    for (const QSharedPointer<Command> &command : commands) {
        add(command);
    }
    Q_EMIT stateChanged();
}

void QueueController::saveDigests(const QString &target)
{
    auto record = std::make_unique<SaveCommandData>(target);
    const QSharedPointer<Command> command = makeSaveCommand(record.get());
    std::vector<std::unique_ptr<CommandData>> records;
    records.push_back(std::move(record));
    model.append(std::move(records));
    add(command);
    Q_EMIT stateChanged();
}

QSharedPointer<Command> QueueController::makeSaveCommand(SaveCommandData *record)
{
    std::vector<const DigestCommandData *> digests;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (const auto *const data = qobject_cast<const DigestCommandData *>(model.getRecord(row))) {
            digests.push_back(data);
        }
    }
    return QSharedPointer<SaveCommand>::create(record, std::move(digests));
}

void QueueController::add(const QSharedPointer<Command> &command)
{
    queue().addCommand(command);
    // An added command wakes the worker, which ends a pause. A pause right after it voids that wake-up.
    if (isHeld) {
        queue().pause();
    }
    auto *const record = qobject_cast<SaveCommandData *>(command->getCommandData());
    if (record && record->getStatus() == CommandData::REQUIRE_USER_ACTION) {
        Q_EMIT answerNeeded(record);
    }
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

void QueueController::cancel(const std::vector<CommandData *> &records)
{
    for (const CommandData *const record : records) {
        // The queue searches its list, so skip what has ended. Cancel by reference and not by pointer: a command that
        // ends just now is not listed any more and keeps its status.
        if (!CommandListModel::hasEnded(record->getStatus())) {
            queue().cancelCommandByReference(record->getReference());
        }
    }
    restartUnlessHeld(); // the queue stays paused otherwise if it waited for the answer to one of them
    Q_EMIT stateChanged();
}

void QueueController::tryAgain(const std::vector<CommandData *> &records)
{
    for (CommandData *const record : records) {
        if (isStopping || record->getStatus() == CommandData::FINISHED || model.isListed(record->getReference())) {
            continue;
        }
        model.relist(record);
        if (auto *const save = qobject_cast<SaveCommandData *>(record)) {
            save->checkTarget();
            add(makeSaveCommand(save));
        } else {
            add(QSharedPointer<DigestCommand>::create(static_cast<DigestCommandData *>(record)));
        }
    }
    Q_EMIT stateChanged();
}

void QueueController::answer(SaveCommandData *record, bool overwrite)
{
    if (record->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        return;
    }
    if (!overwrite) {
        cancel({record});
        return;
    }
    record->allowOverwriting();
    restartUnlessHeld();
    Q_EMIT stateChanged();
}

void QueueController::stop()
{
    isStopping = true;
    isHeld = false;
    worker->stop();
    Q_EMIT stateChanged();
}

void QueueController::startWorker()
{
    worker = std::make_unique<CommandQueueThread>();
    model.follow(queue());
    connect(
        &queue(), &CommandQueue::awaitingUserAction, this, &QueueController::restartIfAnswered, Qt::QueuedConnection);
    connect(worker.get(), &QThread::finished, this, &QueueController::renewWorker, Qt::QueuedConnection);
    worker->start();
}

// A stopped worker cannot be restarted, so a new one replaces it. The queued signals of the old one are delivered
// before this call.
void QueueController::renewWorker()
{
    worker->wait();
    startWorker();
    isStopping = false;
    Q_EMIT stateChanged();
}

// A command that is added while the queue waits makes it ask again. If the question has been answered already, this
// pause may have voided the wake-up of the answer.
void QueueController::restartIfAnswered(const CommandData *record)
{
    if (record->getStatus() != CommandData::REQUIRE_USER_ACTION) {
        restartUnlessHeld();
    }
}

void QueueController::restartUnlessHeld()
{
    if (!isHeld && !isStopping) {
        worker->restart();
    }
}

CommandQueue &QueueController::queue() const
{
    return worker->getCommandQueue();
}

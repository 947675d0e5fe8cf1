#ifndef QUEUEMONITOR_SAVECOMMANDDATA_H
#define QUEUEMONITOR_SAVECOMMANDDATA_H

#include <commands/CommandData.h>

/**
 * @brief The record of a SaveCommand: which file to write, and whether the user lets it replace another.
 *
 * If the file exists when the record is made, the status is REQUIRE_USER_ACTION from the start, and the queue will stop
 * in front of the command.
 *
 * Threads: everything may be called on any thread at any time.
 */
class SaveCommandData : public CommandData
{
    Q_OBJECT

public:
    /** @param target path of the file to write */
    explicit SaveCommandData(const QString &target);

    /** Returns the path of the file to write. */
    const QString &getTarget() const;

    QString getDescription() const override;
    QString getTitle() const override;
    QString getTypeName() const override;

    /** Returns whether a file that exists may be replaced; false at first. */
    bool isOverwritingAllowed() const;

    /** Is the user's answer: the file may be replaced, and the command no longer waits for one. */
    void allowOverwriting();

private:
    const QString target;
    std::atomic<bool> overwritingAllowed = false;
};

#endif

#ifndef QUEUEMONITOR_SAVECOMMANDDATA_H
#define QUEUEMONITOR_SAVECOMMANDDATA_H

#include <commands/CommandData.h>

/**
 * @brief The record of a SaveCommand: which file to write, and whether the user allows it to overwrite another.
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
    QString getDescription() const override;
    QString getTitle() const override;
    QString getTypeName() const override;

    /**
     * Sets the status REQUIRE_USER_ACTION if the file exists, so that the queue stops before the command. Called by the
     * constructor; must be called before the record is queued again.
     */
    void checkTarget();

    /** Returns whether an existing file may be overwritten; false at first. */
    bool isOverwritingAllowed() const;

    /** Allows to overwrite the file and sets the status QUEUEING. */
    void allowOverwriting();

private:
    const QString target;
    std::atomic<bool> overwritingAllowed = false;
};

#endif

#ifndef FILEDIGEST_INTERRUPTNOTIFIER_H
#define FILEDIGEST_INTERRUPTNOTIFIER_H

#include <QObject>

/**
 * @brief Turns Ctrl+C (SIGINT) into a signal of its thread's event loop.
 *
 * From its construction on, the first SIGINT is delivered as interrupted(), and a second one ends the process at once.
 * There may be one object at a time. On systems other than Unix it does nothing, and Ctrl+C ends the process as ever.
 */
class InterruptNotifier : public QObject
{
    Q_OBJECT

public:
    InterruptNotifier();

    /** Gives SIGINT its default action back. */
    ~InterruptNotifier() override;

Q_SIGNALS:
    void interrupted();
};

#endif

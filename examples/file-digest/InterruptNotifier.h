#ifndef FILEDIGEST_INTERRUPTNOTIFIER_H
#define FILEDIGEST_INTERRUPTNOTIFIER_H

#include <QObject>

/**
 * @brief Turns Ctrl+C (SIGINT) into a signal of its thread's event loop.
 *
 * The first SIGINT after the construction is delivered as interrupted(), and a second one ends the process at once.
 * Only one object may exist at a time. On systems other than Unix it does nothing, and Ctrl+C ends the process as
 * usual.
 */
class InterruptNotifier : public QObject
{
    Q_OBJECT

public:
    InterruptNotifier();

    /** Restores the default action of SIGINT. */
    ~InterruptNotifier() override;

Q_SIGNALS:
    void interrupted();
};

#endif

#ifndef QUEUEMONITOR_STATUSPANEL_H
#define QUEUEMONITOR_STATUSPANEL_H

#include "QueueController.h"

#include <QElapsedTimer>
#include <QStatusBar>

class QLabel;
class QProgressBar;

/** @brief A status bar with the state of a QueueController: counts, overall progress, rate and time left. */
class StatusPanel : public QStatusBar
{
    Q_OBJECT

public:
    explicit StatusPanel(QWidget *parent);

    /** Shows the current state of @p controller. */
    void update(QueueController &controller);

private:
    QString describe(QueueController::State state, const CommandListModel::Summary &summary) const;
    QString describeRate(const CommandListModel::Summary &summary) const;

    QLabel *label;
    QProgressBar *bar;
    qint64 startBytes = 0; // digested when the queue began to run
    QElapsedTimer sinceStart;
};

#endif

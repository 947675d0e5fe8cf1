#ifndef QUEUEMONITOR_STATUSPANEL_H
#define QUEUEMONITOR_STATUSPANEL_H

#include "QueueController.h"

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

/** @brief Shows the state of a QueueController in a status bar: counts, overall progress, rate and time left. */
class StatusPanel : public QWidget
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

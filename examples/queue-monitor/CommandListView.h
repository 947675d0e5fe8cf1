#ifndef QUEUEMONITOR_COMMANDLISTVIEW_H
#define QUEUEMONITOR_COMMANDLISTVIEW_H

#include <QListView>

/**
 * @brief A list of rows of equal height that stays fast with a hundred thousand of them.
 *
 * Shows a hint while it is empty.
 */
class CommandListView : public QListView
{
    Q_OBJECT

public:
    /** Repaints the visible part of the change, without a new layout. */
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

#endif

#ifndef QUEUEMONITOR_COMMANDLISTVIEW_H
#define QUEUEMONITOR_COMMANDLISTVIEW_H

#include <QListView>

class QTouchEvent;

/**
 * @brief A list of rows of one height that stays quick with a hundred thousand of them, and takes a touch for a press
 * of the left mouse button.
 */
class CommandListView : public QListView
{
    Q_OBJECT

public:
    explicit CommandListView(QWidget *parent = nullptr);

    /** Repaints what is visible of the change, and lays nothing out anew. */
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) override;

protected:
    bool viewportEvent(QEvent *event) override;

private:
    void pressAt(const QTouchEvent *event);
    void release();

    QPointF pressed; // where the last touch began
};

#endif

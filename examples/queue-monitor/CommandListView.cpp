#include "CommandListView.h"

#include <qtextensions/QTouchToQMouseEventConversion.h>

#include <QCoreApplication>
#include <QMouseEvent>

CommandListView::CommandListView(QWidget *parent)
    : QListView(parent)
{
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    viewport()->setAttribute(Qt::WA_AcceptTouchEvents);
}

void CommandListView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles)
{
    // QListView would measure every row again, in case that one has another height now; here none ever has.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::dataChanged(topLeft, bottomRight, roles);
}

bool CommandListView::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::TouchBegin:
        pressAt(static_cast<QTouchEvent *>(event));
        return true; // accepted as it comes, so the rest of the touch arrives here, too
    case QEvent::TouchUpdate:
        return true;
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        release();
        return true;
    default:
        return QListView::viewportEvent(event);
    }
}

void CommandListView::pressAt(const QTouchEvent *event)
{
    QMouseEvent press = qtextensions::QTouchToQMouseEventConversion(event);
    pressed = press.position();
    QCoreApplication::sendEvent(viewport(), &press);
}

// A press without an end would leave the list selecting.
void CommandListView::release()
{
    QMouseEvent event(QEvent::MouseButtonRelease,
        pressed,
        viewport()->mapToGlobal(pressed),
        Qt::LeftButton,
        Qt::NoButton,
        Qt::NoModifier);
    QCoreApplication::sendEvent(viewport(), &event);
}

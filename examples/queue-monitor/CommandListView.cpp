#include "CommandListView.h"

#include <QPainter>

void CommandListView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles)
{
    // QListView would measure every row again. Here the height never changes.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::dataChanged(topLeft, bottomRight, roles);
}

void CommandListView::paintEvent(QPaintEvent *event)
{
    QListView::paintEvent(event);
    if (model()->rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(),
            Qt::AlignCenter | Qt::TextWordWrap,
            tr("Drop files here or press %1").arg(QKeySequence(QKeySequence::Open).toString(QKeySequence::NativeText)));
    }
}

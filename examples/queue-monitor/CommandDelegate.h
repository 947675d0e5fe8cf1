#ifndef QUEUEMONITOR_COMMANDDELEGATE_H
#define QUEUEMONITOR_COMMANDDELEGATE_H

#include <QStyledItemDelegate>

/**
 * @brief Paints a row of a CommandListModel on two lines, in the colours of the view's palette.
 *
 * A glyph shows the status at the left. Then come title and detail, and at the right the status, with a progress bar
 * while the command runs.
 */
class CommandDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CommandDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

#endif

#include "CommandDelegate.h"

#include "CommandListModel.h"
#include "StatusColor.h"

#include <numerics/ColorUtil.h>

#include <QApplication>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 6; // pixels
constexpr int statusCharacters = 20; // room for the longest status
constexpr double detailShare = 0.7; // of the text's colour in a mix with the base
constexpr double frameShare = 0.4; // likewise

struct Layout
{
    explicit Layout(const QStyleOptionViewItem &option)
    {
        const QRect area = option.rect.adjusted(margin, margin, -margin, -margin);
        const int rightWidth = statusCharacters * option.fontMetrics.averageCharWidth();
        const int lineHeight = area.height() / 2;
        badge = QRect(area.topLeft(), QSize(area.height(), area.height()));
        title = QRect(badge.right() + 2 * margin, area.top(), 0, lineHeight);
        title.setRight(area.right() - rightWidth - margin);
        detail = title.translated(0, lineHeight);
        status = QRect(area.right() - rightWidth, area.top(), rightWidth, lineHeight);
        progress = status.translated(0, lineHeight);
    }

    QRect badge;
    QRect title;
    QRect detail;
    QRect status;
    QRect progress;
};

void drawText(QPainter *painter, const QRect &rect, const QString &text, const QColor &color, Qt::TextElideMode elide)
{
    painter->setPen(color);
    painter->drawText(rect,
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        painter->fontMetrics().elidedText(text, elide, rect.width()));
}

void drawBadge(
    QPainter *painter, const QRect &rect, const QString &text, CommandData::Status status, const QPalette &palette)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(statusBackground(status, palette));
    painter->drawRoundedRect(rect, margin, margin);
    painter->setPen(statusColor(status, palette));
    painter->drawText(rect, Qt::AlignCenter, text);
}

void drawProgress(QPainter *painter, const QRect &rect, int percent, const QStyleOptionViewItem &option)
{
    QStyleOptionProgressBar bar;
    bar.state = option.state | QStyle::State_Horizontal;
    bar.direction = option.direction;
    bar.fontMetrics = option.fontMetrics;
    bar.palette = option.palette;
    // Styles derive the frame from the window's colour, which can be lost on a dark base.
    bar.palette.setColor(
        QPalette::Window, ColorUtil::interpolate(bar.palette.text().color(), bar.palette.base().color(), frameShare));
    bar.rect = rect;
    bar.minimum = 0;
    bar.maximum = 100;
    bar.progress = percent;
    bar.text = u"%1 %"_s.arg(percent);
    bar.textAlignment = Qt::AlignCenter;
    bar.textVisible = true;
    option.widget->style()->drawControl(QStyle::CE_ProgressBar, &bar, painter, option.widget);
}

} // namespace

CommandDelegate::CommandDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

void CommandDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const Layout layout(option);
    const QPalette &palette = option.palette;
    const auto status = static_cast<CommandData::Status>(index.data(CommandListModel::StatusRole).toInt());
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QColor text = palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    const QColor statusText = isSelected ? text : statusColor(status, palette);
    const bool isDimmed = !isSelected && status != CommandData::ERR;
    const QColor detailText = isDimmed ? ColorUtil::interpolate(text, palette.base().color(), detailShare) : statusText;

    painter->save();
    painter->setFont(option.font);
    option.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    drawText(painter, layout.title, index.data().toString(), text, Qt::ElideMiddle);
    drawText(painter, layout.detail, index.data(CommandListModel::DetailRole).toString(), detailText, Qt::ElideMiddle);
    drawText(
        painter, layout.status, index.data(CommandListModel::StatusNameRole).toString(), statusText, Qt::ElideRight);
    drawProgress(painter, layout.progress, index.data(CommandListModel::ProgressRole).toInt(), option);
    drawBadge(painter, layout.badge, index.data(CommandListModel::KindRole).toString(), status, palette);
    painter->restore();
}

QSize CommandDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    Q_UNUSED(index)
    return {0, 2 * option.fontMetrics.height() + 3 * margin};
}

#include "CommandDelegate.h"

#include "CommandListModel.h"
#include "StatusLook.h"

#include <numerics/ColorUtil.h>

#include <QApplication>
#include <QFontDatabase>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 6; // pixels
constexpr int statusCharacters = 20; // enough for the longest status
constexpr double detailShare = 0.7; // of the text's colour in a mix with the base
constexpr double frameShare = 0.4; // likewise

struct Layout
{
    Layout(const QStyleOptionViewItem &option, bool hasProgress)
    {
        const QRect area = option.rect.adjusted(margin, margin, -margin, -margin);
        const int rightWidth = std::min(statusCharacters * option.fontMetrics.averageCharWidth(), area.width() / 3);
        const int lineHeight = area.height() / 2;
        badge = QRect(area.topLeft(), QSize(area.height(), area.height()));
        title = QRect(badge.right() + 2 * margin, area.top(), 0, lineHeight);
        title.setRight(area.right() - rightWidth - margin);
        detail = title.translated(0, lineHeight);
        status = QRect(area.right() - rightWidth, area.top(), rightWidth, lineHeight);
        progress = status.translated(0, lineHeight);
        if (!hasProgress) {
            detail.setRight(area.right());
        }
    }

    QRect badge;
    QRect title;
    QRect detail;
    QRect status;
    QRect progress;
};

void drawBadge(QPainter *painter, const QRect &rect, const StatusLook &look)
{
    QFont font = painter->font();
    font.setBold(true);
    font.setPixelSize(rect.height() / 2);
    painter->setFont(font);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(look.background);
    painter->drawEllipse(rect);
    painter->setPen(look.color);
    painter->drawText(rect, Qt::AlignCenter, look.glyph);
}

void drawProgress(QPainter *painter, const QRect &rect, int percent, const QStyleOptionViewItem &option)
{
    QStyleOptionProgressBar bar;
    bar.initFrom(option.widget);
    bar.state |= QStyle::State_Horizontal;
    // Styles derive the frame from the window's colour, which can be lost on a dark base.
    bar.palette.setColor(
        QPalette::Window, ColorUtil::interpolate(bar.palette.text().color(), bar.palette.base().color(), frameShare));
    bar.rect = rect;
    bar.minimum = 0;
    bar.maximum = 100;
    bar.progress = percent;
    bar.text = u"%1%"_s.arg(percent);
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
    const auto status = static_cast<CommandData::Status>(index.data(CommandListModel::StatusRole).toInt());
    const bool isRunning = status == CommandData::PROCESSING;
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const Layout layout(option, isRunning);
    const QPalette &palette = option.palette;
    const StatusLook look = lookOf(status, palette);
    const QColor text = palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    const QColor dimmed = isSelected ? text : ColorUtil::interpolate(text, palette.base().color(), detailShare);
    const QColor statusText = isSelected ? text : look.color;
    const bool hasDigest = !index.data(CommandListModel::DigestRole).toString().isEmpty();
    QFont titleFont = option.font;
    titleFont.setStrikeOut(status == CommandData::CANCELLED);
    QFont digestFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    digestFont.setPointSizeF(option.font.pointSizeF());
    const auto draw = [painter](const QRect &rect, const QString &content, const QColor &color, const QFont &font) {
        painter->setFont(font);
        painter->setPen(color);
        const QString shown = QFontMetrics(font).elidedText(content, Qt::ElideMiddle, rect.width());
        painter->drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    };

    painter->save();
    option.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    draw(layout.title, index.data().toString(), status == CommandData::CANCELLED ? dimmed : text, titleFont);
    draw(layout.detail,
        index.data(CommandListModel::DetailRole).toString(),
        status == CommandData::ERR ? statusText : dimmed,
        hasDigest ? digestFont : option.font);
    draw(layout.status, look.name, statusText, option.font);
    if (isRunning) {
        drawProgress(painter, layout.progress, index.data(CommandListModel::ProgressRole).toInt(), option);
    }
    drawBadge(painter, layout.badge, look);
    painter->restore();
}

QSize CommandDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    Q_UNUSED(index)
    return {0, 2 * option.fontMetrics.height() + 3 * margin};
}

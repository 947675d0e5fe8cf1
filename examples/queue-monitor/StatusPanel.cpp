#include "StatusPanel.h"

#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QProgressBar>
#include <QStyle>

using namespace Qt::StringLiterals;
using State = QueueController::State;

namespace {

constexpr int leftMargin = 4; // pixels
constexpr int barWidth = 120;
constexpr qint64 steadyTime = 1000; // milliseconds until the rate is meaningful

class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        Q_UNUSED(event)
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        style()->drawItemText(&painter, rect(), Qt::AlignVCenter, palette(), isEnabled(), shown, foregroundRole());
    }
};

} // namespace

StatusPanel::StatusPanel(QWidget *parent)
    : QStatusBar(parent)
    , label(new ElidedLabel(this))
    , bar(new QProgressBar(this))
{
    label->setMinimumWidth(1); // not that of the text
    setContentsMargins(leftMargin, 0, 0, 0);
    bar->setFixedWidth(barWidth);
    addWidget(label, 1);
    addPermanentWidget(bar);
}

void StatusPanel::update(QueueController &controller)
{
    const State state = controller.getState();
    const CommandListModel::Summary &summary = controller.getModel().getSummary();
    if (state != State::Running || summary.unanswered > 0 || !sinceStart.isValid()) {
        startBytes = summary.digestedBytes;
        sinceStart.start();
    }
    const qint64 totalBytes = summary.digestedBytes + summary.remainingBytes;
    bar->setVisible(summary.remainingBytes > 0);
    bar->setValue(static_cast<int>(100 * summary.digestedBytes / std::max<qint64>(totalBytes, 1)));
    label->setText(describe(state, summary));
    label->setToolTip(label->text());
}

QString StatusPanel::describe(State state, const CommandListModel::Summary &summary) const
{
    const QString states[] = {tr("Idle"), tr("Running"), tr("Paused"), tr("Stopping")}; // as QueueController::State
    const bool isWaiting = summary.unanswered > 0 && state != State::Stopping;
    QStringList parts{isWaiting ? tr("Waiting for your answer") : states[static_cast<int>(state)]};
    if (summary.digests > 0) {
        parts += tr("%1 of %2 files finished").arg(summary.finished).arg(summary.digests);
    }
    if (summary.failed > 0) {
        parts += tr("%1 failed").arg(summary.failed);
    }
    if (summary.cancelled > 0) {
        parts += tr("%1 cancelled").arg(summary.cancelled);
    }
    if (state == State::Running && summary.remainingBytes > 0 && sinceStart.hasExpired(steadyTime)) {
        parts += describeRate(summary);
    }
    return parts.join(", "_L1);
}

QString StatusPanel::describeRate(const CommandListModel::Summary &summary) const
{
    const qint64 rate = std::max<qint64>(1000 * (summary.digestedBytes - startBytes) / sinceStart.elapsed(), 1);
    const qint64 seconds = summary.remainingBytes / rate + 1;
    const QString timeLeft = seconds < 100 ? tr("%1 s left").arg(seconds) : tr("%1 min left").arg(seconds / 60 + 1);
    return tr("%1/s").arg(QLocale().formattedDataSize(rate, 0, QLocale::DataSizeTraditionalFormat)) + ", "_L1
        + timeLeft;
}

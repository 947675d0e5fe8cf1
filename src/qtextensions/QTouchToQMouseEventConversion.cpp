#include "QTouchToQMouseEventConversion.h"

#include <QEvent>
#include <QPointF>
#include <QPointingDevice>
#include <QTouchEvent>

namespace {

QMouseEvent makeMouseEvent(QEvent::Type type, const QPointF &position, Qt::MouseButton button)
{
    return QMouseEvent(
        type, position, position, position, button, button, Qt::NoModifier, QPointingDevice::primaryPointingDevice());
}

} // namespace

QMouseEvent qtextensions::QTouchToQMouseEventConversion(const QTouchEvent *event)
{
    if (!event || event->points().isEmpty()) {
        return makeMouseEvent(QEvent::None, QPointF(), Qt::NoButton);
    }
    return makeMouseEvent(QEvent::MouseButtonPress, event->points().first().position(), Qt::LeftButton);
}

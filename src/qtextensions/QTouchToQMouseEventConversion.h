#ifndef TARNWICK_QTEXTENSIONS_QTOUCHTOQMOUSEEVENTCONVERSION_H
#define TARNWICK_QTEXTENSIONS_QTOUCHTOQMOUSEEVENTCONVERSION_H

#include <tarnwick_export.h>

#include <QMouseEvent>

class QTouchEvent;

namespace qtextensions {

/**
 * Returns a QEvent::MouseButtonPress with the left button at the first point of @p event, for every type of touch
 * event.
 *
 * The local, scene and global position of the result are the local position of the point. The left button is the only
 * pressed button, there are no keyboard modifiers, and the device is QPointingDevice::primaryPointingDevice(). Nothing
 * else of the touch event is used.
 *
 * A QMouseEvent can be neither copied nor moved, so initialise a variable with the result:
 *
 * @code
 * QMouseEvent press = qtextensions::QTouchToQMouseEventConversion(touchEvent);
 * QCoreApplication::sendEvent(target, &press);
 * @endcode
 *
 * Threads: must be called on the Gui thread, since the constructor of QMouseEvent modifies the primary device.
 *
 * @param event not owned. If it is null or has no points, the result has the type QEvent::None, which receivers ignore,
 *        the position (0, 0), and no buttons.
 */
TARNWICK_EXPORT QMouseEvent QTouchToQMouseEventConversion(const QTouchEvent *event);

} // namespace qtextensions

#endif

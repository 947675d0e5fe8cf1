#ifndef TARNWICK_QTEXTENSIONS_QTOUCHTOQMOUSEEVENTCONVERSION_H
#define TARNWICK_QTEXTENSIONS_QTOUCHTOQMOUSEEVENTCONVERSION_H

#include <tarnwick_export.h>

#include <QMouseEvent>

class QTouchEvent;

namespace qtextensions {

/**
 * Returns a press of the left mouse button at the first point of @p event, whatever kind of touch event that is.
 *
 * The local, scene and global position of the result are all the point's local position; the left button is the only
 * one held; there are no keyboard modifiers; the device is QPointingDevice::primaryPointingDevice(). State and global
 * position of the point, the other points, and modifiers, time stamp and device of the touch event play no part.
 *
 * A QMouseEvent can be neither copied nor moved, so bind the result or initialise a variable with it:
 *
 * @code
 * QMouseEvent press = qtextensions::QTouchToQMouseEventConversion(touchEvent);
 * QCoreApplication::sendEvent(target, &press);
 * @endcode
 *
 * Threads: only on the Gui thread, since making a mouse event writes the last point of the primary device.
 *
 * @param event not owned; if it is null or has no points, the result has the type QEvent::None, which no receiver
 *        handles, at (0, 0) and without a button
 */
TARNWICK_EXPORT QMouseEvent QTouchToQMouseEventConversion(const QTouchEvent *event);

} // namespace qtextensions

#endif

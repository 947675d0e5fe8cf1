#ifndef TARNWICK_STRINGS_QENUMTOSTRING_H
#define TARNWICK_STRINGS_QENUMTOSTRING_H

#include <tarnwick_export.h>

#include <QFileDevice>
#include <QString>

/** Names of Qt's enumerators. */
namespace QEnumToString {

/**
 * Returns the qualified name of @p error, for example "QFileDevice::ReadError". The name is not translated. A value
 * that is not an enumerator gives a null string.
 *
 * May be called on any thread, also by static initialisers and exit handlers of clients: the names are constant data.
 */
TARNWICK_EXPORT QString qFileDeviceError(const QFileDevice::FileError &error);

} // namespace QEnumToString

#endif

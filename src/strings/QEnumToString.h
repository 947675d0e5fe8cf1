#ifndef TARNWICK_STRINGS_QENUMTOSTRING_H
#define TARNWICK_STRINGS_QENUMTOSTRING_H

#include <tarnwick_export.h>

#include <QFileDevice>
#include <QString>

/** Names of the values of Qt's enumerations. */
namespace QEnumToString {

/**
 * Returns the qualified name of @p error, for example "QFileDevice::ReadError", untranslated; a null text for a value
 * outside the enumeration. May be called on any thread, and in static initialisers and exit handlers of clients: the
 * names are there as long as the library is loaded.
 */
TARNWICK_EXPORT QString qFileDeviceError(const QFileDevice::FileError &error);

} // namespace QEnumToString

#endif

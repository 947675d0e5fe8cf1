#ifndef FILEDIGEST_ESCAPEDPATH_H
#define FILEDIGEST_ESCAPEDPATH_H

#include <QString>

/**
 * Returns @p path as sha256sum writes it: with a backslash, a line feed and a carriage return as `\\`, `\n` and `\r`,
 * so that the result contains no line break. A line of checksums with such a path begins with a backslash.
 */
QString escapedPath(QString path);

#endif

#ifndef QUEUEMONITOR_STATUSCOLOR_H
#define QUEUEMONITOR_STATUSCOLOR_H

#include <commands/CommandData.h>

#include <QColor>
#include <QPalette>

/**
 * Returns the colour in which a list with @p palette writes @p status: darkened on a light base and lightened on a dark
 * one, so that it stands out well enough to be read.
 */
QColor statusColor(CommandData::Status status, const QPalette &palette);

/** Returns the soft colour of the same kind to put behind a text in statusColor(). */
QColor statusBackground(CommandData::Status status, const QPalette &palette);

#endif

#ifndef QUEUEMONITOR_STATUSLOOK_H
#define QUEUEMONITOR_STATUSLOOK_H

#include <commands/CommandData.h>

#include <QColor>
#include <QCoreApplication>
#include <QPalette>

/** How a list shows a status. */
struct StatusLook
{
    Q_DECLARE_TR_FUNCTIONS(StatusLook)

public:
    QString name; ///< in the user's language
    QChar glyph;
    QColor color; ///< for text on the base colour of the palette
    QColor background; ///< a soft colour behind a glyph in this colour
};

/** Returns the look of @p status in a list with @p palette, which may be light or dark. */
StatusLook lookOf(CommandData::Status status, const QPalette &palette = {});

#endif

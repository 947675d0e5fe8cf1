#ifndef QUEUEMONITOR_LOGMENU_H
#define QUEUEMONITOR_LOGMENU_H

#include <QMenu>

/**
 * @brief Switches the debug lines of each registered logging category on and off.
 *
 * Begins with the default filter of an application, under which no category writes debug lines, and replaces the filter
 * rules of the process at each switch.
 */
class LogMenu : public QMenu
{
    Q_OBJECT

public:
    /** Lists the categories that are registered by now. */
    explicit LogMenu(QWidget *parent);

private:
    void applyFilter() const;
};

#endif

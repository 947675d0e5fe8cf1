#ifndef QUEUEMONITOR_SELECTIONMENU_H
#define QUEUEMONITOR_SELECTIONMENU_H

#include <QMenu>

#include <functional>
#include <vector>

class CommandData;
class QAbstractItemView;
class QueueController;

/** @brief The actions on the selected rows of a list, which shows them in its context menu as well. */
class SelectionMenu : public QMenu
{
    Q_OBJECT

public:
    SelectionMenu(QAbstractItemView *list, QueueController &controller, QWidget *parent);

private:
    using Records = std::vector<CommandData *>;
    using Predicate = bool (*)(const CommandData *);
    using Operation = std::function<void(const Records &)>;

    void add(const QString &text, const QKeySequence &shortcut, Predicate isFor, const Operation &perform);
    void updateSelection(const QAbstractItemView *list);
    void enableActions();

    QueueController &controller;
    Records selected; // in the order of the rows
    std::vector<std::function<Records()>> recordsOfActions; // for each action, the selected records that it is for
};

#endif

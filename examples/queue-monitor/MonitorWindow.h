#ifndef QUEUEMONITOR_MONITORWINDOW_H
#define QUEUEMONITOR_MONITORWINDOW_H

#include "QueueController.h"

#include <QMainWindow>

class CommandListView;
class StatusPanel;

/**
 * @brief Shows the commands of a QueueController and offers what can be done with them in menus and a toolbar.
 *
 * Files and folders can be dropped onto it. It keeps its place on the screen in QSettings, as text.
 */
class MonitorWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MonitorWindow(QWidget *parent = nullptr);

    /** Queues the files among @p paths and those in the folders among them, in natural order. */
    void addPaths(QStringList paths);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeMenus();
    void makeToolBar();
    void makeList();
    void makeLogMenu();
    void makeHelpMenu();
    void restorePlace();

    void askForFiles();
    void askForFolder();
    void askForTarget();
    void askToOverwrite(SaveCommandData *record);
    void askToStop();
    void showState();

    QueueController controller;
    CommandListView *list = nullptr;
    StatusPanel *statusPanel = nullptr;
    QAction *addFilesAction = nullptr;
    QAction *addFolderAction = nullptr;
    QAction *saveAction = nullptr;
    QAction *clearAction = nullptr;
    QAction *pauseAction = nullptr;
    QAction *goOnAction = nullptr;
    QAction *stopAction = nullptr;
};

#endif

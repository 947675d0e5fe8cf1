#ifndef QUEUEMONITOR_MONITORWINDOW_H
#define QUEUEMONITOR_MONITORWINDOW_H

#include "QueueController.h"

#include <QMainWindow>

class CommandListView;
class QLabel;
class QMenu;
class QToolBar;

/**
 * @brief Shows the commands of a QueueController and offers what can be done with them in menus and a toolbar.
 *
 * Its place on the screen is kept in QSettings, as text.
 */
class MonitorWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MonitorWindow(QWidget *parent = nullptr);
    ~MonitorWindow() override;

    /** Queues the files among @p paths and those in the folders among them, in natural order. */
    void addPaths(QStringList paths);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    using Slot = void (MonitorWindow::*)();

    QAction *makeAction(const QString &text, const QKeySequence &shortcut, Slot slot);
    void makeActions();
    void makeMenus();
    void makeToolBar();
    void makeList();
    void restorePlace();

    void askForFiles();
    void askForFolder();
    void askForTarget();
    void askToOverwrite();
    void pause();
    void goOn();
    void cancelSelected();
    void stop();
    void clear();
    void showState();
    QString describeState() const;

    QueueController controller;
    CommandListView *list = nullptr;
    QLabel *stateLabel = nullptr;
    QLabel *countLabel = nullptr;
    QAction *addFilesAction = nullptr;
    QAction *addFolderAction = nullptr;
    QAction *saveAction = nullptr;
    QAction *clearAction = nullptr;
    QAction *pauseAction = nullptr;
    QAction *goOnAction = nullptr;
    QAction *cancelAction = nullptr;
    QAction *answerAction = nullptr;
    QAction *stopAction = nullptr;
};

#endif

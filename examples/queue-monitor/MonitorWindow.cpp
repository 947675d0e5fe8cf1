#include "MonitorWindow.h"

#include "CommandDelegate.h"
#include "CommandListView.h"
#include "FolderListing.h"
#include "LogMenu.h"
#include "SaveCommandData.h"
#include "SelectionMenu.h"
#include "StatusPanel.h"

#include <conversions/StringConversions.h>
#include <strings/NaturalSort.h>
#include <strings/StringUtility.h>

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize firstSize(900, 560);
constexpr QSize leastSize(320, 240);
const QString placeKey = u"window/place"_s; // "x,y,width,height"

} // namespace

MonitorWindow::MonitorWindow(QWidget *parent)
    : QMainWindow(parent)
{
    setWindowTitle(tr("Queue monitor"));
    setMinimumSize(leastSize);
    setAcceptDrops(true);
    makeActions();
    makeList();
    makeMenus();
    makeToolBar();
    statusPanel = new StatusPanel(this);
    statusBar()->addWidget(statusPanel, 1);
    connect(&controller, &QueueController::stateChanged, this, &MonitorWindow::showState);
    connect(&controller, &QueueController::answerNeeded, this, &MonitorWindow::askToOverwrite);
    restorePlace();
    showState();
}

MonitorWindow::~MonitorWindow()
{
    delete list; // before the model that it shows
}

template <typename Receiver>
QAction *MonitorWindow::makeAction(
    const QString &text, const QKeySequence &shortcut, Receiver *receiver, void (Receiver::*slot)())
{
    auto *const action = new QAction(text, this);
    action->setShortcut(shortcut);
    action->setToolTip(u"%1 (%2)"_s.arg(action->iconText(), shortcut.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, receiver, slot);
    return action;
}

void MonitorWindow::makeActions()
{
    using Window = MonitorWindow;
    using Queue = QueueController;
    addFilesAction = makeAction(tr("Add &Files..."), QKeySequence::Open, this, &Window::askForFiles);
    addFolderAction = makeAction(tr("Add F&older..."), tr("Ctrl+Shift+O"), this, &Window::askForFolder);
    saveAction = makeAction(tr("&Save Digests..."), QKeySequence::Save, this, &Window::askForTarget);
    clearAction = makeAction(tr("C&lear List"), tr("Ctrl+Shift+Del"), &controller.getModel(), &CommandListModel::clear);
    // At most one of these two is enabled.
    pauseAction = makeAction(tr("&Pause"), Qt::Key_Pause, &controller, &Queue::pause);
    goOnAction = makeAction(tr("&Go On"), Qt::Key_Pause, &controller, &Queue::goOn);
    stopAction = makeAction(tr("S&top..."), QKeySequence::Cancel, this, &Window::askToStop);
}

void MonitorWindow::makeMenus()
{
    QMenu *const fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addActions({addFilesAction, addFolderAction, saveAction, clearAction});
    fileMenu->addSeparator();
    fileMenu->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close)->setMenuRole(QAction::QuitRole);
    menuBar()->addMenu(new SelectionMenu(list, controller, this));
    QMenu *const queueMenu = menuBar()->addMenu(tr("&Queue"));
    queueMenu->addActions({pauseAction, goOnAction});
    queueMenu->addSeparator();
    queueMenu->addAction(stopAction);
    menuBar()->addMenu(new LogMenu(this));
    makeHelpMenu();
}

void MonitorWindow::makeHelpMenu()
{
    QMenu *const menu = menuBar()->addMenu(tr("&Help"));
    const auto addText = [this, menu](const QString &title, const QString &text) {
        return menu->addAction(title, this, [this, title, text] { QMessageBox::about(this, title, text); });
    };
    addText(tr("Help"),
        tr("Add files or folders, or drop them here. Each file becomes a command of the queue, which computes its "
           "SHA-256 digest.\n\nThe context menu of a row copies the digest, opens the folder, tries again or "
           "cancels.\n\nSave Digests writes a file that sha256sum -c can check."))
        ->setShortcut(QKeySequence::HelpContents);
    addText(tr("About"),
        tr("Queue monitor %1, an example of the library Tarnwick").arg(QCoreApplication::applicationVersion()))
        ->setMenuRole(QAction::AboutRole);
    menu->addAction(tr("About Qt"), qApp, &QApplication::aboutQt)->setMenuRole(QAction::AboutQtRole);
}

void MonitorWindow::makeToolBar()
{
    QToolBar *const toolBar = addToolBar(tr("Commands"));
    toolBar->setMovable(false);
    toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    toolBar->addActions({addFilesAction, addFolderAction, saveAction, pauseAction, goOnAction});
    toolBar->insertSeparator(pauseAction);
    toolBar->addSeparator();
    toolBar->addAction(stopAction);
    for (QAction *const action : toolBar->actions()) {
        toolBar->widgetForAction(action)->setFocusPolicy(action->isSeparator() ? Qt::NoFocus : Qt::TabFocus);
    }
}

void MonitorWindow::makeList()
{
    list = new CommandListView(this);
    list->setAccessibleName(tr("Commands"));
    list->setItemDelegate(new CommandDelegate(list));
    list->setModel(&controller.getModel());
    setCentralWidget(list);
    list->setFocus();
}

void MonitorWindow::restorePlace()
{
    resize(firstSize);
    const QRect place = StringConversions::stringToRect(QSettings().value(placeKey).toString());
    const QScreen *const screen = QGuiApplication::screenAt(place.center());
    if (place.isValid() && screen) {
        setGeometry(place);
    }
}

void MonitorWindow::closeEvent(QCloseEvent *event)
{
    QSettings().setValue(placeKey, StringConversions::rectToString(normalGeometry()));
    QMainWindow::closeEvent(event);
}

void MonitorWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() && addFilesAction->isEnabled()) {
        event->acceptProposedAction();
    }
}

void MonitorWindow::dropEvent(QDropEvent *event)
{
    QStringList paths;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    event->acceptProposedAction();
    addPaths(paths);
}

void MonitorWindow::addPaths(QStringList paths)
{
    for (QString &path : paths) {
        path = QFileInfo(path).absoluteFilePath();
    }
    NaturalSort::sort(paths);
    const FolderListing listing = listFiles(paths);
    controller.digest(listing.files);
    if (!listing.failures.isEmpty()) {
        QMessageBox::warning(this, tr("Add Folder"), listing.failures.join(u'\n'));
    }
}

QFileDialog *MonitorWindow::makeFileDialog(const QString &title)
{
    auto *const dialog = new QFileDialog(this, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    return dialog;
}

void MonitorWindow::askForFiles()
{
    QFileDialog *const dialog = makeFileDialog(tr("Add Files"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    connect(dialog, &QFileDialog::filesSelected, this, &MonitorWindow::addPaths);
    dialog->open();
}

void MonitorWindow::askForFolder()
{
    QFileDialog *const dialog = makeFileDialog(tr("Add Folder"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::filesSelected, this, &MonitorWindow::addPaths);
    dialog->open();
}

void MonitorWindow::askForTarget()
{
    QFileDialog *const dialog = makeFileDialog(tr("Save Digests"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite); // askToOverwrite() does
    dialog->selectFile(StringUtility::stringToSafeFileName(dialog->directory().dirName()) + ".sha256"_L1);
    connect(dialog, &QFileDialog::fileSelected, &controller, &QueueController::saveDigests);
    dialog->open();
}

void MonitorWindow::askToOverwrite(SaveCommandData *record)
{
    auto *const box = new QMessageBox(QMessageBox::Question,
        tr("Save Digests"),
        tr("%1 exists. Overwrite it?").arg(QFileInfo(record->getTarget()).fileName()),
        QMessageBox::Yes | QMessageBox::No,
        this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setDefaultButton(QMessageBox::No);
    connect(box, &QMessageBox::finished, &controller, [this, record](int button) {
        controller.answer(record, button == QMessageBox::Yes);
    });
    box->open();
}

void MonitorWindow::askToStop()
{
    if (QMessageBox::question(this, tr("Stop"), tr("Cancel all commands that have not finished?"))
        == QMessageBox::Yes) {
        controller.stop();
    }
}

void MonitorWindow::showState()
{
    using State = QueueController::State;
    const State state = controller.getState();
    const CommandListModel &model = controller.getModel();
    const bool hasListed = model.getListedCount() > 0;
    for (QAction *const action : {addFilesAction, addFolderAction, saveAction}) {
        action->setEnabled(state != State::Stopping);
    }
    clearAction->setEnabled(model.rowCount() > 0 && !hasListed);
    pauseAction->setEnabled(state == State::Running);
    goOnAction->setEnabled(state == State::Paused);
    stopAction->setEnabled(hasListed && state != State::Stopping);
    statusPanel->update(controller);
}

#include "MonitorWindow.h"

#include "CommandDelegate.h"
#include "CommandListView.h"
#include "FolderListing.h"
#include "SaveCommandData.h"
#include "SelectionMenu.h"
#include "StatusPanel.h"

#include <conversions/StringConversions.h>
#include <logging/CategoriesRegistry.h>
#include <logging/FilterConstruction.h>
#include <strings/NaturalSort.h>
#include <strings/StringUtility.h>

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLoggingCategory>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
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
    makeList();
    makeMenus();
    makeToolBar();
    statusPanel = new StatusPanel(this);
    setStatusBar(statusPanel);
    connect(&controller, &QueueController::stateChanged, this, &MonitorWindow::showState);
    connect(&controller, &QueueController::answerNeeded, this, &MonitorWindow::askToOverwrite);
    restorePlace();
    showState();
}

void MonitorWindow::makeMenus()
{
    using Window = MonitorWindow;
    QMenu *const files = menuBar()->addMenu(tr("&File"));
    addFilesAction = files->addAction(tr("Add &Files..."), QKeySequence::Open, this, &Window::askForFiles);
    addFolderAction = files->addAction(tr("Add F&older..."), tr("Ctrl+Shift+O"), this, &Window::askForFolder);
    saveAction = files->addAction(tr("&Save Digests..."), QKeySequence::Save, this, &Window::askForTarget);
    clearAction = files->addAction(tr("C&lear List"), tr("Ctrl+Shift+Del"));
    connect(clearAction, &QAction::triggered, &controller.getModel(), &CommandListModel::clear);
    files->addSeparator();
    files->addAction(tr("&Quit"), QKeySequence::Quit, this, &Window::close)->setMenuRole(QAction::QuitRole);
    menuBar()->addMenu(new SelectionMenu(list, controller, this));
    QMenu *const queue = menuBar()->addMenu(tr("&Queue"));
    // Only one of these two is visible.
    pauseAction = queue->addAction(tr("&Pause"), Qt::Key_Pause, &controller, &QueueController::pause);
    goOnAction = queue->addAction(tr("&Go On"), Qt::Key_Pause, &controller, &QueueController::goOn);
    queue->addSeparator();
    stopAction = queue->addAction(tr("S&top..."), QKeySequence::Cancel, this, &Window::askToStop);
    makeLogMenu();
    makeHelpMenu();
}

// Switches the debug lines of each registered category, which the default filter leaves out.
void MonitorWindow::makeLogMenu()
{
    QMenu *const menu = menuBar()->addMenu(tr("&Log"));
    const auto applyFilter = [menu] {
        QStringList rules{logging::getDefaultApplicationFilter()};
        for (const QAction *const action : menu->actions()) {
            rules.append(logging::getFilterConstructionSubstring(
                action->data().toString(), action->isChecked(), utility::Optional<QtMsgType>(QtDebugMsg)));
        }
        QLoggingCategory::setFilterRules(rules.join(u'\n'));
    };
    for (const QString &category : logging::CategoriesRegistrySingleton::getInstance().getCategories()) {
        QAction *const action = menu->addAction(tr("&Debug lines of %1").arg(category), applyFilter);
        action->setData(category);
        action->setCheckable(true);
    }
    applyFilter();
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
        action->setToolTip(u"%1 (%2)"_s.arg(action->iconText(), action->shortcut().toString(QKeySequence::NativeText)));
        toolBar->widgetForAction(action)->setFocusPolicy(action->isSeparator() ? Qt::NoFocus : Qt::TabFocus);
    }
}

void MonitorWindow::makeList()
{
    list = new CommandListView;
    list->setUniformItemSizes(true);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
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

void MonitorWindow::askForFiles()
{
    addPaths(QFileDialog::getOpenFileNames(this, tr("Add Files")));
}

void MonitorWindow::askForFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Add Folder"));
    if (!folder.isEmpty()) {
        addPaths({folder});
    }
}

void MonitorWindow::askForTarget()
{
    const QString name = StringUtility::stringToSafeFileName(QDir::current().dirName()) + ".sha256"_L1;
    const QString target = QFileDialog::getSaveFileName(
        this, tr("Save Digests"), name, {}, nullptr, QFileDialog::DontConfirmOverwrite); // askToOverwrite() does
    if (!target.isEmpty()) {
        controller.saveDigests(target);
    }
}

void MonitorWindow::askToOverwrite(SaveCommandData *record)
{
    auto *const box = new QMessageBox(QMessageBox::Question,
        tr("Save Digests"),
        tr("%1 exists. Overwrite it?").arg(QFileInfo(record->getDescription()).fileName()),
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
    pauseAction->setVisible(state != State::Paused);
    goOnAction->setVisible(state == State::Paused);
    stopAction->setEnabled(hasListed && state != State::Stopping);
    statusPanel->update(controller);
}

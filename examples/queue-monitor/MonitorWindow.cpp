#include "MonitorWindow.h"

#include "CommandDelegate.h"
#include "CommandListView.h"
#include "FolderListing.h"
#include "LogMenu.h"
#include "SaveCommandData.h"
#include "StatusColor.h"

#include <conversions/StringConversions.h>
#include <strings/NaturalSort.h>
#include <strings/StringUtility.h>

#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize firstSize(900, 560);
const QString placeKey = u"window/place"_s; // "x,y,width,height"

} // namespace

MonitorWindow::MonitorWindow(QWidget *parent)
    : QMainWindow(parent)
{
    setWindowTitle(tr("Queue monitor"));
    makeActions();
    makeMenus();
    makeToolBar();
    makeList();
    stateLabel = new QLabel(this);
    countLabel = new QLabel(this);
    statusBar()->addWidget(stateLabel);
    statusBar()->addPermanentWidget(countLabel);
    connect(&controller, &QueueController::stateChanged, this, &MonitorWindow::showState);
    restorePlace();
    showState();
}

MonitorWindow::~MonitorWindow()
{
    delete list; // ahead of the model that it shows
}

QAction *MonitorWindow::makeAction(const QString &text, const QKeySequence &shortcut, Slot slot)
{
    auto *const action = new QAction(text, this);
    action->setShortcut(shortcut);
    action->setToolTip(u"%1 (%2)"_s.arg(action->iconText(), shortcut.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void MonitorWindow::makeActions()
{
    addFilesAction = makeAction(tr("Add &Files..."), QKeySequence::Open, &MonitorWindow::askForFiles);
    addFolderAction = makeAction(tr("Add F&older..."), tr("Ctrl+Shift+O"), &MonitorWindow::askForFolder);
    saveAction = makeAction(tr("&Save Digests..."), QKeySequence::Save, &MonitorWindow::askForTarget);
    clearAction = makeAction(tr("C&lear List"), tr("Ctrl+L"), &MonitorWindow::clear);
    pauseAction = makeAction(tr("&Pause"), tr("Ctrl+P"), &MonitorWindow::pause);
    goOnAction = makeAction(tr("&Go On"), tr("Ctrl+G"), &MonitorWindow::goOn);
    cancelAction = makeAction(tr("&Cancel Selected"), QKeySequence::Delete, &MonitorWindow::cancelSelected);
    answerAction = makeAction(tr("&Answer..."), tr("Ctrl+R"), &MonitorWindow::askToOverwrite);
    stopAction = makeAction(tr("S&top"), tr("Ctrl+T"), &MonitorWindow::stop);
}

void MonitorWindow::makeMenus()
{
    QMenu *const fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addActions({addFilesAction, addFolderAction, saveAction, clearAction});
    fileMenu->addSeparator();
    fileMenu->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    menuBar()->addMenu(tr("&Queue"))->addActions({pauseAction, goOnAction, cancelAction, answerAction, stopAction});
    menuBar()->addMenu(new LogMenu(this));
}

void MonitorWindow::makeToolBar()
{
    QToolBar *const toolBar = addToolBar(tr("Commands"));
    toolBar->setMovable(false);
    toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    toolBar->addActions({addFilesAction, addFolderAction, saveAction});
    toolBar->addSeparator();
    toolBar->addActions({pauseAction, goOnAction, cancelAction, answerAction, stopAction});
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
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MonitorWindow::showState);
    connect(list, &QAbstractItemView::activated, this, [this](const QModelIndex &index) {
        if (controller.getModel().getRecord(index.row()) == controller.getAwaitingRecord()) {
            askToOverwrite();
        }
    });
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

void MonitorWindow::addPaths(QStringList paths)
{
    for (QString &path : paths) {
        path = QFileInfo(path).absoluteFilePath();
    }
    NaturalSort::sort(paths);
    controller.digest(listFiles(paths).files);
}

void MonitorWindow::askForFiles()
{
    auto *const dialog = new QFileDialog(this, tr("Add Files"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    connect(dialog, &QFileDialog::filesSelected, this, &MonitorWindow::addPaths);
    dialog->open();
}

void MonitorWindow::askForFolder()
{
    auto *const dialog = new QFileDialog(this, tr("Add Folder"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::filesSelected, this, &MonitorWindow::addPaths);
    dialog->open();
}

void MonitorWindow::askForTarget()
{
    auto *const dialog = new QFileDialog(this, tr("Save Digests"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite); // the command asks when its turn comes
    dialog->selectFile(StringUtility::stringToSafeFileName(dialog->directory().dirName()) + ".sha256"_L1);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) { controller.saveDigests(path); });
    dialog->open();
}

void MonitorWindow::askToOverwrite()
{
    const SaveCommandData *const record = controller.getAwaitingRecord();
    if (!record) {
        return;
    }
    auto *const box = new QMessageBox(QMessageBox::Question,
        tr("Overwrite?"),
        tr("%1 exists already.").arg(QFileInfo(record->getTarget()).fileName()),
        QMessageBox::NoButton,
        this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(tr("The queue waits for your answer."));
    QPushButton *const overwrite = box->addButton(tr("&Overwrite"), QMessageBox::AcceptRole);
    QPushButton *const keep = box->addButton(tr("&Keep It"), QMessageBox::DestructiveRole);
    box->addButton(tr("Answer &Later"), QMessageBox::RejectRole);
    box->setDefaultButton(keep);
    connect(overwrite, &QPushButton::clicked, this, [this] { controller.answer(true); });
    connect(keep, &QPushButton::clicked, this, [this] { controller.answer(false); });
    box->open();
}

void MonitorWindow::pause()
{
    controller.pause();
}

void MonitorWindow::goOn()
{
    controller.goOn();
}

void MonitorWindow::cancelSelected()
{
    QModelIndexList selected = list->selectionModel()->selectedIndexes();
    std::sort(selected.begin(), selected.end()); // the queue looks for each from its front
    std::vector<const CommandData *> records;
    for (const QModelIndex &index : std::as_const(selected)) {
        records.push_back(controller.getModel().getRecord(index.row()));
    }
    controller.cancel(records);
}

void MonitorWindow::stop()
{
    controller.stop();
}

void MonitorWindow::clear()
{
    controller.getModel().clear();
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
    goOnAction->setEnabled(state == State::Paused && hasListed);
    cancelAction->setEnabled(hasListed && list->selectionModel()->hasSelection());
    answerAction->setEnabled(state == State::AwaitingAnswer);
    stopAction->setEnabled(hasListed && state != State::Stopping);
    stateLabel->setText(describeState());
    countLabel->setText(tr("%1 of %2 finished, %3 failed, %4 cancelled")
                            .arg(model.getCount(CommandData::FINISHED))
                            .arg(model.rowCount())
                            .arg(model.getCount(CommandData::ERR))
                            .arg(model.getCount(CommandData::CANCELLED)));
}

QString MonitorWindow::describeState() const
{
    switch (controller.getState()) {
    case QueueController::State::Idle:
        return tr("Idle");
    case QueueController::State::Running:
        return tr("Running");
    case QueueController::State::Paused:
        return tr("Paused");
    case QueueController::State::AwaitingAnswer:
        return tr("Waits for your answer (%1)").arg(answerAction->shortcut().toString(QKeySequence::NativeText));
    case QueueController::State::Stopping:
        break;
    }
    return tr("Stopping");
}

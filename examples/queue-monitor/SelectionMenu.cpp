#include "SelectionMenu.h"

#include "DigestCommandData.h"
#include "QueueController.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool hasDigest(const CommandData &record)
{
    return record.getStatus() == CommandData::FINISHED && qobject_cast<const DigestCommandData *>(&record);
}

bool canBeTriedAgain(const CommandData &record)
{
    return record.getStatus() == CommandData::ERR || record.getStatus() == CommandData::CANCELLED;
}

bool canBeCancelled(const CommandData &record)
{
    return !CommandListModel::hasEnded(record.getStatus());
}

bool isAny(const CommandData & /*record*/)
{
    return true;
}

void copy(const std::vector<CommandData *> &records, bool withNames)
{
    QStringList lines;
    for (const CommandData *const record : records) {
        const QByteArray digest = static_cast<const DigestCommandData *>(record)->getDigest().toHex();
        lines.append(QString::fromLatin1(digest) + (withNames ? "  "_L1 + record->getTitle() : QString()));
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void openFolder(const CommandData &record)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(record.getDescription()).absolutePath()));
}

} // namespace

SelectionMenu::SelectionMenu(QAbstractItemView *list, QueueController &controller, QWidget *parent)
    : QMenu(tr("&Edit"), parent)
    , controller(controller)
{
    addRecordAction(tr("&Copy"), QKeySequence::Copy, hasDigest, [](const Records &records) { copy(records, true); });
    addRecordAction(
        tr("Copy &Digest"), tr("Ctrl+Shift+C"), hasDigest, [](const Records &records) { copy(records, false); });
    addRecordAction(tr("&Open Folder"), {}, isAny, [](const Records &records) { openFolder(*records.front()); });
    addRecordAction(tr("&Try Again"), QKeySequence::Refresh, canBeTriedAgain, [&controller](const Records &records) {
        controller.tryAgain(records);
    });
    addRecordAction(
        tr("C&ancel Selected"), QKeySequence::Delete, canBeCancelled, [&controller](const Records &records) {
            controller.cancel(records);
        });
    list->addActions(actions());
    list->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(
        list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, list] { updateSelection(list); });
    connect(&controller, &QueueController::stateChanged, this, &SelectionMenu::enableActions);
    enableActions();
}

void SelectionMenu::addRecordAction(const QString &text,
    const QKeySequence &shortcut,
    bool (*isFor)(const CommandData &),
    const std::function<void(const Records &)> &perform)
{
    const auto records = [this, isFor] {
        Records matching;
        std::copy_if(
            selected.begin(), selected.end(), std::back_inserter(matching), [isFor](const CommandData *record) {
                return isFor(*record);
            });
        return matching;
    };
    recordsOfActions.emplace_back(records);
    addAction(text, shortcut, this, [perform, records] { perform(records()); });
}

void SelectionMenu::updateSelection(const QAbstractItemView *list)
{
    QModelIndexList indexes = list->selectionModel()->selectedIndexes();
    std::sort(indexes.begin(), indexes.end());
    selected.clear();
    for (const QModelIndex &index : std::as_const(indexes)) {
        selected.push_back(controller.getModel().getRecord(index.row()));
    }
    enableActions();
}

void SelectionMenu::enableActions()
{
    for (std::size_t i = 0; i < recordsOfActions.size(); ++i) {
        actions().at(static_cast<qsizetype>(i))->setEnabled(!recordsOfActions[i]().empty());
    }
}

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

bool hasDigest(const CommandData *record)
{
    return record->getStatus() == CommandData::FINISHED && qobject_cast<const DigestCommandData *>(record);
}

bool canBeTriedAgain(const CommandData *record)
{
    return record->getStatus() == CommandData::ERR || record->getStatus() == CommandData::CANCELLED;
}

bool canBeCancelled(const CommandData *record)
{
    return !CommandListModel::hasEnded(record->getStatus());
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

void openFolder(const std::vector<CommandData *> &records)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(records.front()->getDescription()).absolutePath()));
}

} // namespace

SelectionMenu::SelectionMenu(QAbstractItemView *list, QueueController &controller, QWidget *parent)
    : QMenu(tr("&Edit"), parent)
    , controller(controller)
{
    const auto isAny = [](const CommandData *) { return true; };
    const auto tryAgain = [&controller](const Records &records) { controller.tryAgain(records); };
    const auto cancel = [&controller](const Records &records) { controller.cancel(records); };
    add(tr("&Copy"), QKeySequence::Copy, hasDigest, [](const Records &records) { copy(records, true); });
    add(tr("Copy &Digest"), tr("Ctrl+Shift+C"), hasDigest, [](const Records &records) { copy(records, false); });
    add(tr("&Open Folder"), {}, isAny, openFolder);
    add(tr("&Try Again"), QKeySequence::Refresh, canBeTriedAgain, tryAgain);
    add(tr("C&ancel Selected"), QKeySequence::Delete, canBeCancelled, cancel);
    list->addActions(actions());
    list->setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto update = [this, list] { updateSelection(list); };
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, update);
    connect(&controller, &QueueController::stateChanged, this, &SelectionMenu::enableActions);
    enableActions();
}

void SelectionMenu::add(const QString &text, const QKeySequence &shortcut, Predicate isFor, const Operation &perform)
{
    const auto records = [this, isFor] {
        Records matching;
        std::copy_if(selected.begin(), selected.end(), std::back_inserter(matching), isFor);
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

#include "mainwindow/ItemCommands.h"

#include "items/forms/MessagesPanel.h"
#include "items/forms/frmReplace.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "sheets/CopiedTable.h"
#include "widgets/RowsTable.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <utility>

namespace orvista {

ItemCommands::ItemCommands(const Project& project, ProjectChanges& changes, const Navigator& navigator,
                           PanelDock& dock, PreviewSettingSource setting, QWidget& window)
    : QObject(&window),
      project_(project),
      changes_(changes),
      navigator_(navigator),
      dock_(dock),
      setting_(std::move(setting)),
      window_(window) {
    connect(&dock, &PanelDock::made, this, &ItemCommands::serve);
}

void ItemCommands::bindToTables(QAction& entry, QKeySequence::StandardKey keys) {
    entry.setShortcuts(keys);
    entry.setShortcutContext(Qt::WidgetShortcut);
    ofTables_ << &entry;
}

void ItemCommands::serve(ProjectPanel& made) {
    auto* const panel = qobject_cast<ItemPanel*>(&made);
    if (!panel)
        return;
    panel->table().addActions(ofTables_);
    panel->table().setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(panel, &ItemPanel::rowLeft, this, &ItemCommands::clearNotice);
}

ItemPanel* ItemCommands::shownPanel() const {
    return qobject_cast<ItemPanel*>(dock_.shownPanel());
}

void ItemCommands::showNotice(const QString& text) {
    hasSaid_ = true;
    dock_.showNotice(text);
}

void ItemCommands::clearNotice() {
    if (std::exchange(hasSaid_, false))
        dock_.showNotice({});
}

std::vector<Item> ItemCommands::selectedItems() {
    clearNotice();
    std::vector<Item> items;
    if (const ItemPanel* const panel = shownPanel())
        items = panel->selectedItems();
    else // what was selected before is shown, but nothing is done with rows that are out of sight
        dock_.open<MessagesPanel>();
    if (items.empty())
        showNotice(tr("Select the rows first"));
    return items;
}

void ItemCommands::copy(const std::vector<Item>& items) {
    const CopiedItems copied = copiedItems(project_, items);
    auto* const data = new QMimeData;
    data->setData(QString::fromLatin1(copiedItemsType), QByteArray::fromStdString(copiedBytes(copied)));
    data->setText(QString::fromStdString(copiedText(copied, project_, shownPanel()->digests())));
    QGuiApplication::clipboard()->setMimeData(data);
}

void ItemCommands::miEditCopy_Click() {
    if (const auto items = selectedItems(); !items.empty())
        copy(items);
}

void ItemCommands::miEditCut_Click() {
    const std::vector<Item> items = selectedItems();
    if (items.empty() || !changes_.mayChange(items))
        return;
    copy(items);
    changes_.change(tr("Clear"), clearedItems(project_, items));
}

void ItemCommands::miEditClear_Click() {
    if (const auto items = selectedItems(); !items.empty())
        changes_.change(tr("Clear"), clearedItems(project_, items));
}

void ItemCommands::miEditReplace_Click() {
    clearNotice();
    frmReplace dialog(project_, navigator_.notAppliedItems(), setting_, &window_);
    dialog.exec();
    if (!dialog.IsCanceled)
        changes_.change(tr("Replace"), dialog.Replaced);
}

std::optional<CopiedItems> ItemCommands::clipboardItems() {
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    const QString type = QString::fromLatin1(copiedItemsType);
    const std::string bytes = data && data->hasFormat(type) ? data->data(type).toStdString() : std::string();
    auto read = readCopied(bytes);
    if (auto* const copied = std::get_if<CopiedItems>(&read))
        return std::move(*copied);
    showNotice(std::get<CopyFault>(read) == CopyFault::NewerVersion
                   ? tr("This was copied in a newer version of the program: nothing was pasted")
                   : tr("The clipboard holds no rows of Messages or Variables: nothing was pasted"));
    return std::nullopt;
}

void ItemCommands::miEditPaste_Click() {
    const std::vector<Item> selected = selectedItems();
    if (selected.empty())
        return;
    const auto copied = clipboardItems();
    if (!copied)
        return;
    const Pasted pasted = pasteOnto(project_, *copied, selected, shownPanel()->itemsFromSelected());
    if (!pasted.refusal.empty())
        return showNotice(QString::fromStdString(pasted.refusal));
    if (changes_.change(tr("Paste"), pasted.changes))
        emit pastedFrom(copied->folder);
}

} // namespace orvista

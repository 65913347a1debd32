#include "mainwindow/ItemEditing.h"

#include "items/forms/ItemPanel.h"
#include "items/forms/frmReplace.h"
#include "mainwindow/ItemPanels.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/ProjectChanges.h"
#include "sheets/CopiedTable.h"
#include "widgets/RowsTable.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <array>
#include <utility>

namespace orvista {

namespace {

struct Keys {
    const char* entry;
    QKeySequence::StandardKey keys;
};
constexpr std::array keys{Keys{"miEditCut", QKeySequence::Cut}, Keys{"miEditCopy", QKeySequence::Copy},
                          Keys{"miEditPaste", QKeySequence::Paste},
                          Keys{"miEditClear", QKeySequence::Delete}};

} // namespace

ItemEditing::ItemEditing(const Project& project, ProjectChanges& changes, Commands& commands,
                         ItemPanels& panels, const Navigator& navigator, QWidget& window)
    : QObject(&window),
      project_(project),
      changes_(changes),
      commands_(commands),
      panels_(panels),
      navigator_(navigator),
      window_(window) {
    connect(&panels, &ItemPanels::made, this, &ItemEditing::addTo);
}

std::vector<CommandRow> ItemEditing::entries() {
    return {{.name = "miEditCut",
             .caption = tr("Cu&t"),
             .toolTip = tr("Copy the selected rows of Messages or Variables, then clear them"),
             .enabling = EnablingRules::projectWork,
             .run = [this] { miEditCut_Click(); },
             .beginsGroup = true},
            {.name = "miEditCopy",
             .caption = tr("&Copy"),
             .toolTip = tr("Copy the selected rows of Messages or Variables"),
             .enabling = EnablingRules::projectWork,
             .run = [this] { miEditCopy_Click(); }},
            {.name = "miEditPaste",
             .caption = tr("&Paste"),
             .toolTip = tr("Put what was copied onto the selected row and those below it"),
             .enabling = EnablingRules::projectWork,
             .run = [this] { miEditPaste_Click(); }},
            {.name = "miEditClear",
             .caption = tr("Cl&ear"),
             .toolTip = tr("Make the selected rows what they are in a new project"),
             .enabling = EnablingRules::projectWork,
             .run = [this] { miEditClear_Click(); }},
            {.name = "miEditReplace",
             .caption = tr("&Replace in Messages\u2026"),
             .shortcut = Qt::CTRL | Qt::Key_H,
             .toolTip = tr("Replace a text in the scripts of all messages, each place to be ticked off"),
             .enabling = EnablingRules::projectWork,
             .run = [this] { miEditReplace_Click(); },
             .beginsGroup = true}};
}

void ItemEditing::bindKeys() {
    for (const Keys& row : keys) {
        QAction& action = commands_.action(row.entry);
        action.setShortcuts(row.keys);
        action.setShortcutContext(Qt::WidgetShortcut); // the tables'
    }
}

void ItemEditing::addTo(ItemPanel& panel) {
    for (const Keys& row : keys)
        panel.table().addAction(&commands_.action(row.entry));
    panel.table().setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(&panel, &ItemPanel::rowLeft, this, &ItemEditing::sayNothing);
}

void ItemEditing::say(const QString& text) {
    said_ = true;
    emit notice(text);
}

void ItemEditing::sayNothing() {
    if (std::exchange(said_, false))
        emit notice({});
}

std::vector<std::string> ItemEditing::selectedItems() {
    sayNothing();
    std::vector<std::string> items;
    if (const ItemPanel* const panel = panels_.shown())
        items = panel->selectedItems();
    else // what was selected before is shown, but nothing is done with rows that are out of sight
        panels_.miViewMessages_Click();
    if (items.empty())
        say(tr("Select the rows first"));
    return items;
}

void ItemEditing::copy(const std::vector<std::string>& items) {
    const CopiedItems copied = copiedItems(project_, items);
    auto* const data = new QMimeData;
    data->setData(QString::fromLatin1(copiedItemsType), QByteArray::fromStdString(copiedBytes(copied)));
    data->setText(QString::fromStdString(copiedText(copied, project_, panels_.digests())));
    QGuiApplication::clipboard()->setMimeData(data);
}

void ItemEditing::miEditCopy_Click() {
    if (const auto items = selectedItems(); !items.empty())
        copy(items);
}

void ItemEditing::miEditCut_Click() {
    const std::vector<std::string> items = selectedItems();
    if (items.empty() || !changes_.mayChange(items))
        return;
    copy(items);
    changes_.change(tr("Clear"), clearedItems(items));
}

void ItemEditing::miEditClear_Click() {
    if (const auto items = selectedItems(); !items.empty())
        changes_.change(tr("Clear"), clearedItems(items));
}

void ItemEditing::miEditReplace_Click() {
    sayNothing();
    frmReplace dialog(project_, navigator_.notAppliedItems(), &window_);
    dialog.exec();
    if (!dialog.IsCanceled)
        changes_.change(tr("Replace"), dialog.Replaced);
}

std::optional<CopiedItems> ItemEditing::clipboardItems() {
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    const QString type = QString::fromLatin1(copiedItemsType);
    const std::string bytes = data && data->hasFormat(type) ? data->data(type).toStdString() : std::string();
    auto read = readCopied(bytes);
    if (auto* const copied = std::get_if<CopiedItems>(&read))
        return std::move(*copied);
    say(std::get<CopyFault>(read) == CopyFault::NewerVersion
            ? tr("This was copied in a newer version of the program: nothing was pasted")
            : tr("The clipboard holds no rows of Messages or Variables: nothing was pasted"));
    return std::nullopt;
}

void ItemEditing::miEditPaste_Click() {
    const std::vector<std::string> selected = selectedItems();
    if (selected.empty())
        return;
    const auto copied = clipboardItems();
    if (!copied)
        return;
    const Pasted pasted = pasteOnto(*copied, selected, panels_.shown()->itemsFromSelected());
    if (!pasted.refusal.empty())
        return say(QString::fromStdString(pasted.refusal));
    if (changes_.change(tr("Paste"), pasted.items))
        emit pastedFrom(copied->folder);
}

} // namespace orvista

#include "sheets/forms/ChangeList.h"

#include "compare/LineMatching.h"
#include "display/forms/BeforeAfterPictures.h"
#include "items/forms/ShownTexts.h"
#include "widgets/DeviceText.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/FormParts.h"
#include "widgets/RowsTable.h"
#include "widgets/ScriptPositions.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QSplitter>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace orvista {

namespace {

/// Of the whole list when it is shown first, in the font's characters and lines.
constexpr ListRoom changesRoom{.characters = 110, .lines = 5};
constexpr int textLines = 6;

/// The lines of a script as the box shows them.
struct ShownLines {
    explicit ShownLines(const DeviceTextEdit& box) : positions(*box.document()) {
        const QString text = box.document()->toRawText();
        for (std::size_t line = 1; line <= positions.lineCount(); ++line) {
            const int start = positions.positionOf(line, 1);
            texts.push_back(text.mid(start, positions.endOfLine(line) - start).toStdString());
        }
        views.assign(texts.begin(), texts.end());
    }
    ScriptPositions positions;
    std::vector<std::string> texts;
    std::vector<std::string_view> views;
};

void mark(DeviceTextEdit& box, const ShownLines& lines, const std::vector<bool>& same) {
    QColor background = box.palette().color(QPalette::Highlight);
    background.setAlphaF(0.25F);
    QList<QTextEdit::ExtraSelection> selections;
    for (std::size_t line = 1; line <= same.size(); ++line) {
        if (same[line - 1])
            continue;
        QTextEdit::ExtraSelection selection;
        selection.cursor = QTextCursor(box.document());
        selection.cursor.setPosition(lines.positions.positionOf(line, 1));
        selection.cursor.setPosition(lines.positions.endOfLine(line), QTextCursor::KeepAnchor);
        selection.format.setBackground(background);
        selections << selection;
    }
    box.setExtraSelections(selections);
    if (!selections.isEmpty()) {
        QTextCursor first = selections.front().cursor;
        first.setPosition(first.selectionStart());
        box.setTextCursor(first);
        box.centerCursor();
    }
}

void markDifferences(DeviceTextEdit& before, DeviceTextEdit& after) {
    const ShownLines old(before);
    const ShownLines now(after);
    std::vector<bool> sameBefore(old.texts.size());
    std::vector<bool> sameAfter(now.texts.size());
    const auto matches = matchLines(old.views, now.views);
    for (std::size_t line = 0; line < matches.size(); ++line) {
        if (!matches[line])
            continue;
        sameAfter[line] = true;
        sameBefore[*matches[line]] = true;
    }
    mark(before, old, sameBefore);
    mark(after, now, sameAfter);
}

/// Line ends are shown by a mark that every font has.
QString onOneLine(const std::string& text, std::size_t from) {
    return shortened(text, from).replace(shownLine("\r\n"), QString(u' ') + QChar(0xB6) + u' ');
}

DeviceTextEdit* shownText(const QString& name) {
    auto* const box = named<DeviceTextEdit>(name);
    box->setReadOnly(true);
    box->setMinimumHeight(textLines * box->fontMetrics().lineSpacing());
    return box;
}

} // namespace

ChangeList::ChangeList(const Project& project, std::vector<Change> changes, PreviewSettingSource setting,
                       QWidget* parent)
    : QWidget(parent),
      project_(project),
      changes_(std::move(changes)),
      chkAllChanges(named<QCheckBox>(QStringLiteral("chkAllChanges"), tr("&All changes"))),
      tblChanges(named<RowsTable>(QStringLiteral("tblChanges"),
                                  QStringList{tr("Item"), tr("Text"), tr("Old"), tr("New")})),
      txtOld(shownText(QStringLiteral("txtOld"))),
      txtNew(shownText(QStringLiteral("txtNew"))),
      pictures_(new BeforeAfterPictures({tr("Old"), tr("New")}, std::move(setting))) {
    fillTable();
    auto* const splitter = new QSplitter(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(tblChanges);
    splitter->addWidget(buildTexts());
    splitter->setStretchFactor(0, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(chkAllChanges);
    layout->addWidget(splitter, 1);
    layout->addWidget(pictures_);
    // A table of variables has no pictures at all.
    pictures_->setVisible(
        std::ranges::any_of(changes_, [](const Change& change) { return isMessage(change.item); }));

    connect(tblChanges->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { showTexts(tblChanges->rowOf(current)); });
    connect(tblChanges, &RowsTable::ticksChanged, this, &ChangeList::followTicks);
    connect(chkAllChanges, &QCheckBox::clicked, this,
            [this](bool tick) { tblChanges->setTicks(std::vector<bool>(changes_.size(), tick)); });
    tblChanges->selectRow(0);
    followTicks();
}

void ChangeList::enter() {
    // As a focus proxy the table would be all that Tab reaches: it leads past what stands before it.
    tblChanges->setFocus();
}

void ChangeList::fillTable() {
    std::vector<TableRow> rows;
    for (const Change& change : changes_) {
        const std::size_t from = shownFrom(change.before, change.after);
        rows.push_back({{QString::fromStdString(nameOf(change.item)), static_cast<int>(rows.size())},
                        {QString::fromUtf8(change.field->name)},
                        {onOneLine(change.before, from)},
                        {onOneLine(change.after, from)}});
    }
    tblChanges->setAccessibleName(tr("Changes"));
    tblChanges->makeTickable();
    tblChanges->setRows(std::move(rows));
    tblChanges->setWordWrap(false);
    tblChanges->setRowHeight(fontMetrics().lineSpacing() * 3 / 2);
    constexpr int old = 2; // as wide as the new one, the last
    tblChanges->horizontalHeader()->setSectionResizeMode(old, QHeaderView::Stretch);
    makeRoom(tblChanges, changesRoom);
}

QWidget* ChangeList::buildTexts() {
    auto* const texts = new QWidget;
    auto* const row = new QHBoxLayout(texts);
    row->setContentsMargins({});
    const auto add = [row](DeviceTextEdit* box, const QString& caption) {
        auto* const column = new QVBoxLayout;
        column->addWidget(labelFor(box, caption));
        column->addWidget(box, 1);
        row->addLayout(column, 1);
    };
    add(txtOld, tr("Old"));
    add(txtNew, tr("New"));
    return texts;
}

void ChangeList::showTexts(int row) {
    if (row < 0)
        return;
    const Change& change = changes_[static_cast<std::size_t>(row)];
    txtOld->setBytes(change.before);
    txtNew->setBytes(change.after);
    markDifferences(*txtOld, *txtNew);
    if (isMessage(change.item))
        pictures_->showChange(project_, change.before, change.after);
}

bool ChangeList::hasTick() const {
    const std::vector<bool> ticks = tblChanges->ticks();
    return std::find(ticks.begin(), ticks.end(), true) != ticks.end();
}

std::vector<Change> ChangeList::ticked() const {
    const std::vector<bool> ticks = tblChanges->ticks();
    std::vector<Change> chosen;
    for (std::size_t row = 0; row < changes_.size(); ++row)
        if (ticks[row])
            chosen.push_back(changes_[row]);
    return chosen;
}

void ChangeList::followTicks() {
    const std::vector<bool> rows = tblChanges->ticks();
    chkAllChanges->setEnabled(!rows.empty());
    chkAllChanges->setChecked(std::find(rows.begin(), rows.end(), false) == rows.end());
    emit ticksChanged();
}

} // namespace orvista

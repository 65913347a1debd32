#include "sheets/forms/NamesTable.h"

#include "sheets/Csv.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>

#include <algorithm>

namespace orvista {

namespace {

bool isTyped(int column) {
    return column >= NamesTable::Label && column <= NamesTable::Comment;
}

const NoteField& fieldOfColumn(int column) {
    return noteFields.at(static_cast<std::size_t>(column - NamesTable::Label));
}

int columnOfField(const NoteField& field) {
    return NamesTable::Label + static_cast<int>(&field - noteFields.data());
}

/// A cell is one line; a spreadsheet's may be several.
QString singleLine(const std::string& cell) {
    return QString::fromStdString(cell).simplified();
}

} // namespace

NamesTable::NamesTable(std::vector<AddressRow> rows, const ProjectNotes& notes)
    : QTableWidget(static_cast<int>(rows.size()), columnCount), rows_(std::move(rows)) {
    setHorizontalHeaderLabels(
        {tr("Item"), tr("Address"), tr("Label"), tr("Unit"), tr("Comment"), tr("Text"), tr("What is wrong")});
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() * 3 / 2);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setEditTriggers(AnyKeyPressed | DoubleClicked | EditKeyPressed);
    setSelectionMode(ContiguousSelection);
    fill(notes);
    setColumnHidden(Fault, true);
    const int character = fontMetrics().averageCharWidth();
    for (const auto& [column, characters] :
         {std::pair{ItemName, 12}, {Address, 10}, {Label, 26}, {Unit, 9}, {Comment, 38}, {FirstText, 20}})
        setColumnWidth(column, characters * character);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    setCurrentCell(0, Label);
    connect(this, &QTableWidget::cellChanged, this, [this](int, int column) {
        if (isTyped(column))
            emit edited();
    });
}

void NamesTable::fill(const ProjectNotes& notes) {
    for (int row = 0; row < rowCount(); ++row) {
        const AddressRow& item = rows_[static_cast<std::size_t>(row)];
        for (int column = 0; column < columnCount; ++column) {
            auto* const cell = new QTableWidgetItem;
            if (!isTyped(column))
                cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
            else
                cell->setText(QString::fromStdString(notes.of(item.item).*fieldOfColumn(column).text));
            setItem(row, column, cell);
        }
        put(row, ItemName, QString::fromStdString(item.name));
        put(row, Address, QString::number(item.address));
        put(row, FirstText, QString::fromStdString(item.text));
    }
}

void NamesTable::propose(const std::vector<NoteChange>& changes) {
    QFont bold = font();
    bold.setBold(true);
    for (const NoteChange& change : changes) {
        const int row =
            static_cast<int>(std::ranges::find(rows_, change.item, &AddressRow::item) - rows_.begin());
        QTableWidgetItem* const cell = item(row, columnOfField(*change.field));
        cell->setText(QString::fromStdString(change.after));
        cell->setFont(bold);
        cell->setToolTip("<p>" + tr("before: %1").arg(QString::fromStdString(change.before)).toHtmlEscaped() +
                         "</p>");
        if (&change == &changes.front())
            setCurrentItem(cell);
    }
}

QString NamesTable::textAt(int row, int column) const {
    return item(row, column)->text();
}

void NamesTable::put(int row, int column, const QString& text) {
    item(row, column)->setText(text);
    item(row, column)->setToolTip(text.isEmpty() ? QString() : "<p>" + text.toHtmlEscaped() + "</p>");
}

void NamesTable::readInto(ProjectNotes& notes) const {
    for (int row = 0; row < rowCount(); ++row)
        for (const NoteField& field : noteFields)
            notes.set(rows_[static_cast<std::size_t>(row)].item, field,
                      textAt(row, columnOfField(field)).trimmed().toStdString());
}

void NamesTable::setFilter(const QString& text, bool onlyUsed) {
    for (int row = 0; row < rowCount(); ++row) {
        bool isShown = false;
        for (int column = 0; column < columnCount && !isShown; ++column)
            isShown = textAt(row, column).contains(text, Qt::CaseInsensitive);
        setRowHidden(row, !isShown || (onlyUsed && !rows_[static_cast<std::size_t>(row)].isUsed));
    }
}

void NamesTable::showFaults(const std::vector<NoteFault>& faults) {
    const QSignalBlocker silent(this);
    const QIcon warning = style()->standardIcon(QStyle::SP_MessageBoxWarning);
    for (int row = 0; row < rowCount(); ++row) {
        for (const NoteField& field : noteFields)
            item(row, columnOfField(field))->setIcon({});
        QStringList texts;
        for (const NoteFault& fault : faults) {
            if (fault.item != rows_[static_cast<std::size_t>(row)].item)
                continue;
            texts << QString::fromUtf8(fault.field->name.data(), qsizetype(fault.field->name.size())) + ": " +
                         QString::fromStdString(fault.text);
            item(row, columnOfField(*fault.field))->setIcon(warning);
        }
        put(row, Fault, texts.join(QStringLiteral("; ")));
    }
    setColumnHidden(Fault, faults.empty());
    resizeColumnToContents(Fault);
    viewport()->update();
}

void NamesTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste))
        paste();
    else if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        clearSelected();
    else
        QTableWidget::keyPressEvent(event);
}

void NamesTable::paste() {
    const std::string bytes = QApplication::clipboard()->text().toStdString();
    const int firstColumn = isTyped(currentColumn()) ? currentColumn() : Label;
    CsvReader reader(bytes, '\t');
    std::vector<std::string> cells;
    {
        const QSignalBlocker silent(this);
        for (int row = std::max(currentRow(), 0); row < rowCount(); ++row) {
            if (isRowHidden(row))
                continue;
            if (!reader.next(cells))
                break;
            for (std::size_t i = 0; i < cells.size(); ++i)
                if (const int column = firstColumn + static_cast<int>(i); isTyped(column))
                    item(row, column)->setText(singleLine(cells[i]));
        }
    }
    viewport()->update();
    emit edited();
}

void NamesTable::copy() const {
    QStringList lines;
    for (const QTableWidgetSelectionRange& range : selectedRanges()) {
        for (int row = range.topRow(); row <= range.bottomRow(); ++row) {
            if (isRowHidden(row))
                continue;
            QStringList cells;
            for (int column = range.leftColumn(); column <= range.rightColumn(); ++column)
                cells << textAt(row, column);
            lines << cells.join(u'\t');
        }
    }
    QApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void NamesTable::clearSelected() {
    {
        const QSignalBlocker silent(this);
        for (QTableWidgetItem* const cell : selectedItems())
            if (isTyped(cell->column()) && !isRowHidden(cell->row()))
                cell->setText({});
    }
    viewport()->update();
    emit edited();
}

} // namespace orvista

#include "script/forms/FixedList.h"

#include "widgets/FormParts.h"

#include <QGridLayout>
#include <QLabel>

namespace orvista {

QModelIndexList ListEntries::match(const QModelIndex& start, int role, const QVariant& value, int hits,
                                   Qt::MatchFlags flags) const {
    const auto find = [&](const QVariant& text, Qt::MatchFlags how) {
        return QStringListModel::match(start, role, text, hits, how);
    };
    const bool isTyped = (flags & Qt::MatchTypeMask) == Qt::MatchStartsWith;
    const QString afterBlank = u' ' + value.toString();
    if (isTyped)
        if (const auto whole = find(afterBlank, Qt::MatchFixedString | Qt::MatchWrap); !whole.isEmpty())
            return whole;
    const QModelIndexList found = find(value, flags);
    return found.isEmpty() && isTyped ? find(afterBlank, flags) : found;
}

QVariant ListEntries::data(const QModelIndex& index, int role) const {
    if (role != Qt::ToolTipRole || !toolTipOf_)
        return QStringListModel::data(index, role);
    const QString toolTip = toolTipOf_(QStringListModel::data(index, Qt::DisplayRole).toString());
    return toolTip.isEmpty() ? QVariant() : QVariant(toolTip);
}

void showFixedList(DropDownList* list, const QString& name, QStringListModel* model, std::size_t position) {
    list->setObjectName(name);
    list->setModel(model);
    list->setCurrentIndex(static_cast<int>(position));
}

std::size_t chosenPosition(const DropDownList* list) {
    return static_cast<std::size_t>(list->currentIndex());
}

void addLabelledList(QGridLayout* grid, int row, int column, const QString& caption, DropDownList* list) {
    grid->addWidget(labelFor(list, caption), row, column);
    grid->addWidget(list, row, column + 1);
    grid->setColumnStretch(column + 1, 1);
}

} // namespace orvista

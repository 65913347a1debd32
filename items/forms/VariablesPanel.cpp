#include "items/forms/VariablesPanel.h"

#include "items/forms/LabelCell.h"
#include "widgets/FilterBox.h"
#include "widgets/FormParts.h"

namespace orvista {

VariablesPanel::VariablesPanel(ItemSources sources)
    : ItemPanel(std::move(sources), named<FilterBox>(QStringLiteral("txtVariablesFilter")),
                named<RowsTable>(QStringLiteral("tblVariables"),
                                 QStringList{tr("Name"), tr("Label"), tr("Address"), tr("Reference"),
                                             tr("Default"), tr("Format"), tr("Used by")})) {
    filter().setAccessibleName(tr("Filter the variables"));
    filter().setToolTip(tr("Show only variables with this text in their row or notes"));
    table().setAccessibleName(tr("Variables"));
    connect(&filter(), &QLineEdit::textChanged, &table(), &RowsTable::setFilter);
}

void VariablesPanel::read() {
    const ItemSources& from = sources();
    from.messages.update(from.shown());
    rows_ = variableRows(from.shown(), from.messages);
}

TableRow VariablesPanel::cells(std::size_t row) const {
    const VariableRow& variable = rows_.at(row);
    return {{cellText(nameOf(variable.item)), static_cast<int>(row)},
            labelCell(noteOf(variable.item)),
            {QString::number(variable.address), static_cast<qlonglong>(variable.address)},
            {cellText(variable.reference)},
            {cellText(variable.defaultValue)},
            {cellText(variable.format)},
            {cellText(variable.usedBy)}};
}

} // namespace orvista

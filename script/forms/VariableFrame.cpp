#include "script/forms/VariableFrame.h"

#include "script/WizardLists.h"
#include "script/forms/FixedList.h"
#include "widgets/FormParts.h"

#include <QGridLayout>
#include <QLabel>

namespace orvista {

VariableFrame::VariableFrame(QWidget* parent)
    : QGroupBox(QStringLiteral("Variable setting"), parent),
      sources_(listModel(wizard::fieldSources(), this)),
      colours_(listModel(colourStyles, this)),
      rows_{} {
    auto* const grid = new QGridLayout(this);
    grid->addWidget(new QLabel(QStringLiteral("Foreground Color")), 0, 2);
    grid->addWidget(new QLabel(QStringLiteral("Background Color")), 0, 3);
    for (std::size_t index = 0; index < rows_.size(); ++index)
        rows_[index] = addRow(grid, index);
    for (const int column : {1, 2, 3})
        grid->setColumnStretch(column, 1);
    grid->setRowStretch(static_cast<int>(rows_.size()) + 1, 1);
}

VariableFrame::Row VariableFrame::addRow(QGridLayout* grid, std::size_t index) {
    const std::array captions{QStringLiteral("1st variable"), QStringLiteral("2nd variable"),
                              QStringLiteral("3rd variable"), QStringLiteral("4th variable")};
    const FieldChoice defaults;
    const Row row{new DropDownList(this), new DropDownList(this), new DropDownList(this)};
    showFixedList(row.cbVar, arrayName("cbVar", index), sources_, defaults.cbVar);
    showFixedList(row.cbVarFgClr, arrayName("cbVarFgClr", index), colours_, defaults.cbVarFgClr);
    showFixedList(row.cbVarBgClr, arrayName("cbVarBgClr", index), colours_, defaults.cbVarBgClr);

    const QString& caption = captions.at(index);
    row.cbVar->setToolTip(tr("What the field shows; a field needs a placeholder in the content text"));
    row.cbVarFgClr->setAccessibleName(tr("%1, Foreground Color").arg(caption));
    row.cbVarBgClr->setAccessibleName(tr("%1, Background Color").arg(caption));

    const int line = static_cast<int>(index) + 1;
    grid->addWidget(labelFor(row.cbVar, caption), line, 0);
    grid->addWidget(row.cbVar, line, 1);
    grid->addWidget(row.cbVarFgClr, line, 2);
    grid->addWidget(row.cbVarBgClr, line, 3);
    return row;
}

void VariableFrame::enableRows(std::size_t count) {
    for (std::size_t index = 0; index < rows_.size(); ++index)
        for (DropDownList* const list :
             {rows_[index].cbVar, rows_[index].cbVarFgClr, rows_[index].cbVarBgClr})
            list->setEnabled(index < count);
}

void VariableFrame::explainVariables(std::function<QString(const QString&)> toolTipOf) {
    sources_->explain(std::move(toolTipOf));
}

void VariableFrame::readInto(MessageForm& form) const {
    for (std::size_t index = 0; index < rows_.size(); ++index)
        form.fields[index] = {chosenPosition(rows_[index].cbVar), chosenPosition(rows_[index].cbVarFgClr),
                              chosenPosition(rows_[index].cbVarBgClr)};
}

} // namespace orvista

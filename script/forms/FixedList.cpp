#include "script/forms/FixedList.h"

#include "script/WizardLists.h"
#include "widgets/FormParts.h"

#include <QGridLayout>
#include <QLabel>

namespace orvista {

QStringListModel* colourModel(QObject* parent) {
    return textListModel(wizard::colours, parent);
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

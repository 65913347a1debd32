#include "display/forms/ValuesList.h"

#include "display/forms/frmValues.h"

#include <QSignalBlocker>
#include <QStandardItemModel>

namespace orvista {

ValuesList::ValuesList(const Project& project, std::function<std::vector<ShownField>()> fields)
    : project_(project), fields_(std::move(fields)) {
    setObjectName(QStringLiteral("cboPreviewValues"));
    addItems({tr("Defaults"), tr("Widest"), tr("Smallest"), tr("On"), tr("Off"), tr("As the Display Has It"),
              tr("Own…")});
    // Without a label before it: the row has no room to spare.
    setAccessibleName(tr("Values of the fields"));
    setToolTip(tr("With which values the fields are shown"));
    // The longest entry is wider than the row can spare.
    keepWidth(static_cast<int>(itemText(Defaults).size()));
    setHeld(std::nullopt);
    connect(this, &QComboBox::activated, this, &ValuesList::choose);
    connect(this, &QComboBox::currentIndexChanged, this, [this](int row) {
        // Set by the program, and not by the user, who may choose "Own…" again.
        if (row != chosen_ && row != Own)
            choose(row);
    });
}

FieldValues ValuesList::values() const {
    switch (chosen_) {
    case Widest:
        return chosenValues(ValueChoice::Widest, project_);
    case Smallest:
        return chosenValues(ValueChoice::Smallest, project_);
    case On:
        return chosenValues(ValueChoice::On, project_);
    case Off:
        return chosenValues(ValueChoice::Off, project_);
    case Held:
        return {held_.value_or(defaultValues(project_)), std::nullopt, std::nullopt};
    case Own:
        return withOwn(chosenValues(ValueChoice::Defaults, project_), own_);
    default:
        return chosenValues(ValueChoice::Defaults, project_);
    }
}

void ValuesList::setHeld(const std::optional<DisplayValues>& held) {
    const bool isNews = held != held_;
    held_ = held;
    static_cast<QStandardItemModel*>(model())->item(Held)->setEnabled(held_.has_value());
    if (chosen_ != Held)
        return;
    if (!held_)
        setCurrentIndex(Defaults);
    else if (isNews)
        emit valuesChanged();
}

void ValuesList::choose(int row) {
    if (row == Own && !askForOwn()) {
        const QSignalBlocker blocker(this);
        setCurrentIndex(chosen_);
        return;
    }
    if (row == chosen_ && row != Own)
        return;
    chosen_ = row;
    emit valuesChanged();
}

bool ValuesList::askForOwn() {
    frmValues form(project_, fields_(), own_, window());
    if (form.exec() != QDialog::Accepted)
        return false;
    own_ = form.own();
    return true;
}

} // namespace orvista

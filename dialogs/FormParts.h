#pragma once

#include "dialogs/controls/DropDownList.h"

#include <QString>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

/// What the forms have in common.
namespace orvista {

/// A label tied to its box as buddy and accessible name, without a mnemonic.
QLabel* labelFor(QWidget* box, const QString& text);

/// A push button with an objectName; Enter presses it only while it has the focus.
QPushButton* namedButton(const QString& name, const QString& caption, QWidget* parent);

/// The two buttons `btnOK` (the form's default) and `btnCancel`, at the end of their row.
struct OkCancelRow {
    explicit OkCancelRow(QWidget* form);
    QPushButton* btnOK;
    QPushButton* btnCancel;
    QHBoxLayout* layout;
};

/// A read-only box with an objectName.
QLineEdit* shownOnlyBox(const QString& name);

/// A drop-down list with an objectName and fixed choices.
template <typename Choices>
DropDownList* choiceList(const QString& name, const Choices& choices, std::size_t position) {
    auto* list = new DropDownList;
    list->setObjectName(name);
    for (const char* choice : choices)
        list->addItem(choice);
    list->setCurrentIndex(static_cast<int>(position));
    return list;
}

/// Room for about `characters` characters of the box's font.
void widenTo(QWidget* box, int characters);

} // namespace orvista

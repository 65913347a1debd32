#pragma once

#include "widgets/DropDownList.h"

#include <QSize>
#include <QString>

#include <utility>

class QAbstractItemView;
class QHBoxLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QWidget;

/// What the forms have in common.
namespace orvista {

/// Makes a widget and gives it its control name.
template <typename Widget, typename... Arguments>
Widget* named(const QString& name, Arguments&&... arguments) {
    auto* widget = new Widget(std::forward<Arguments>(arguments)...);
    widget->setObjectName(name);
    return widget;
}

/// A control of an array is named as it is written: "chkEmergMsg(0)".
QString arrayName(const QString& name, std::size_t index);

/// A label tied to its box as buddy and accessible name, without a mnemonic.
QLabel* labelFor(QWidget* box, const QString& text);

/// A push button with an objectName. Enter presses it while it has the focus, in dialogs and on pages; while
/// no button of a dialog has the focus, Enter presses the dialog's default one. Every push button is made
/// here, so that there is no other rule.
QPushButton* namedButton(const QString& name, const QString& caption, QWidget* parent = nullptr);

/// Disables a button that has done its work. The keyboard goes on at `next` when it was at the button.
void disableUsed(QPushButton* used, QWidget* next);

/// The two buttons `btnOK` (the form's default) and `btnCancel`, at the end of their row.
struct OkCancelBar {
    explicit OkCancelBar(QWidget* form);
    QPushButton* btnOK;
    QPushButton* btnCancel;
    QHBoxLayout* layout;
};

/// A read-only box with an objectName.
QLineEdit* shownOnlyBox(const QString& name);

/// A drop-down list with an objectName and fixed choices.
template <typename Choices>
DropDownList* choiceList(const QString& name, const Choices& choices, std::size_t position) {
    auto* list = named<DropDownList>(name);
    for (const char* choice : choices)
        list->addItem(choice);
    list->setCurrentIndex(static_cast<int>(position));
    return list;
}

/// Leaves no row current or chosen, and none painted so when the list gets the focus: the first key that
/// moves, or the first letter, chooses a row. Call it after the list was filled.
void chooseNone(QAbstractItemView* list);
/// Lets End choose the last row also while none is current; the list itself would go to the first.
void letEndChooseLast(QAbstractItemView* list);

/// The arrows at the end of a row of tabs that is too long are for the mouse; the keyboard turns the tabs
/// themselves.
void keepTabKeyFromScrollButtons(QTabWidget& tabs);

/// For what lies within frames: small screens need the room.
void keepMarginsSmall(QLayout& layout);

/// Gives a window its first size, as far as the screen has room for it.
void resizeWithinScreen(QWidget& window, QSize wanted);

/// Room for about `characters` characters of the box's font.
void widenTo(QWidget* box, int characters);
/// Room for about this many characters and lines of a list's font, as far as the screen has it.
struct ListRoom {
    int characters;
    int lines;
};
void makeRoom(QAbstractItemView* list, ListRoom room);

} // namespace orvista

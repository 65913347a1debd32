#pragma once

#include "display/FieldValues.h"
#include "script/ShownFields.h"

#include <QDialog>

#include <functional>
#include <vector>

class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvista {

/// Asks with which values the fields of a message are to be tried: a box for each. An empty box leaves the
/// field at its default, and time and date running. OK is disabled while a box holds something else than a
/// value.
class frmValues final : public QDialog {
    Q_OBJECT
public:
    /// \param own what the boxes show at first; values of other fields stay as they are
    frmValues(const Project& project, const std::vector<ShownField>& fields, OwnValues own,
              QWidget* parent = nullptr);

    /// With what the boxes hold.
    const OwnValues& own() const { return own_; }

private:
    using Take = std::function<void(const QString& text)>;

    QWidget* boxOf(const Project& project, const ShownField& field);
    QWidget* floatBox(const Project& project, std::size_t index);
    QWidget* booleanBox(const Project& project, std::size_t index);
    QWidget* timeBox();
    QWidget* dateBox();
    QLineEdit* textBox(const QString& name, const QString& text, const QString& placeholder, Take take);
    void takeTexts();

    OwnValues own_;
    /// Takes the text of a box into the values. \throws std::invalid_argument that says what is wrong
    struct Box {
        QLineEdit* box;
        QString name;
        Take take;
    };
    std::vector<Box> boxes_;
    QLabel* lblValuesFault;
    QPushButton* btnOK;
};

} // namespace orvista

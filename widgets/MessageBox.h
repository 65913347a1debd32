#pragma once

#include "model/People.h"

#include <QMessageBox>

#include <string>

namespace orvista {

/// A message box under the program's title that keeps long paths readable: a text with a word too long for
/// the box is broken inside the word.
class MessageBox : public QMessageBox {
    Q_OBJECT
public:
    /// \param text UTF-8
    MessageBox(Icon icon, const std::string& text, StandardButtons buttons, QWidget* parent);

    /// Only a button closes the box: Esc and the window frame do nothing.
    void setAnswerRequired();
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void breakLongWords();

    bool answerRequired_ = false;
};

} // namespace orvista

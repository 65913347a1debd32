#include "dialogs/DialogMessages.h"

#include "widgets/MessageBox.h"

#include <QPushButton>

namespace orvista {

namespace {

QMessageBox::Icon boxIcon(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

void DialogMessages::show(MessageIcon icon, const std::string& text) {
    MessageBox(boxIcon(icon), text, QMessageBox::Ok, parent_).exec();
}

bool DialogMessages::askYesNo(const std::string& text) {
    MessageBox box(QMessageBox::Information, text, QMessageBox::Yes | QMessageBox::No, parent_);
    box.setDefaultButton(QMessageBox::Yes);
    box.setAnswerRequired();
    return box.exec() == QMessageBox::Yes;
}

Answer DialogMessages::askYesNoCancel(const std::string& text) {
    MessageBox box(QMessageBox::Information, text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                   parent_);
    box.setDefaultButton(QMessageBox::Yes);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Cancel;
    }
}

bool confirmReplacing(QWidget* parent, const std::string& path) {
    MessageBox box(QMessageBox::Warning, path + " already exists.\nDo you want to replace it?",
                   QMessageBox::Yes | QMessageBox::No, parent);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

ReloadChoice chooseReload(QWidget* parent, const QString& file) {
    MessageBox box(QMessageBox::Warning,
                   QObject::tr("Discard your changes and read %1 again?").arg(file).toStdString(),
                   QMessageBox::Yes | QMessageBox::No, parent);
    box.setObjectName(QStringLiteral("ReloadQuestion"));
    const QAbstractButton* const compare = box.addButton(QObject::tr("&Compare"), QMessageBox::ActionRole);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    const int answer = box.exec();
    if (box.clickedButton() == compare)
        return ReloadChoice::Compare;
    return answer == QMessageBox::Yes ? ReloadChoice::Discard : ReloadChoice::Keep;
}

} // namespace orvista

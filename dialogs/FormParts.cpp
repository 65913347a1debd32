#include "dialogs/FormParts.h"

#include "dialogs/controls/ShownBox.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace orvista {

QLabel* labelFor(QWidget* box, const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(box);
    QString name = text.trimmed();
    while (name.endsWith(u':') || name.endsWith(u' '))
        name.chop(1);
    box->setAccessibleName(name);
    return label;
}

QPushButton* namedButton(const QString& name, const QString& caption, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

OkCancelRow::OkCancelRow(QWidget* form)
    : btnOK(namedButton(QStringLiteral("btnOK"), QStringLiteral("OK"), form)),
      btnCancel(namedButton(QStringLiteral("btnCancel"), QStringLiteral("Cancel"), form)),
      layout(new QHBoxLayout) {
    btnOK->setDefault(true);
    layout->addStretch();
    layout->addWidget(btnOK);
    layout->addWidget(btnCancel);
}

QLineEdit* shownOnlyBox(const QString& name) {
    auto* box = new ShownBox;
    box->setObjectName(name);
    return box;
}

void widenTo(QWidget* box, int characters) {
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * characters);
}

} // namespace orvista

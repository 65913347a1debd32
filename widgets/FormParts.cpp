#include "widgets/FormParts.h"

#include "widgets/ShownBox.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace orvista {

QString arrayName(const QString& name, std::size_t index) {
    return name + u'(' + QString::number(index) + u')';
}

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
    auto* button = named<QPushButton>(name, caption, parent);
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
    return named<ShownBox>(name);
}

void widenTo(QWidget* box, int characters) {
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * characters);
}

} // namespace orvista

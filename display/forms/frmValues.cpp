#include "display/forms/frmValues.h"

#include "display/FieldFormats.h"
#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "model/VariableValue.h"
#include "widgets/DeviceText.h"
#include "widgets/FormParts.h"

#include <QDate>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTime>
#include <QVBoxLayout>

#include <algorithm>
#include <stdexcept>

namespace orvista {

namespace {

const QString timeForm = QStringLiteral("hh:mm:ss");
const QString dateForm = QStringLiteral("dd.MM.yyyy");
/// Of a box, in characters: the longest placeholder.
constexpr int valueCharacters = 24;

QString nameOfField(const ShownField& field) {
    switch (field.value) {
    case LiveValue::Float:
        return QString::fromStdString(nameOf({Kind::Float, field.index}));
    case LiveValue::Boolean:
        return QString::fromStdString(nameOf({Kind::Boolean, field.index}));
    case LiveValue::Time:
        return QStringLiteral("TIME");
    case LiveValue::Date:
        return QStringLiteral("DATE");
    }
    return {};
}

QLabel* wrapped(QLabel* label) {
    label->setWordWrap(true);
    return label;
}

} // namespace

frmValues::frmValues(const Project& project, const std::vector<ShownField>& fields, OwnValues own,
                     QWidget* parent)
    : QDialog(parent), own_(std::move(own)), lblValuesFault(named<QLabel>(QStringLiteral("lblValuesFault"))) {
    setObjectName(QStringLiteral("frmValues"));
    setWindowTitle(tr("Own Values"));
    setModal(true);
    auto* const rows = new QWidget;
    auto* const form = new QFormLayout(rows);
    for (const ShownField& field : fields) {
        QWidget* const box = boxOf(project, field);
        form->addRow(labelFor(box, nameOfField(field)), box);
    }
    auto* const scrolled = new QScrollArea;
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setFocusPolicy(Qt::NoFocus);
    scrolled->setWidget(rows);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(wrapped(
        new QLabel(fields.empty() ? tr("This message shows no variable, time or date.")
                                  : tr("What the fields of this message show in the preview. An empty box "
                                       "is the default; time and date go on."))));
    layout->addWidget(scrolled, 1);
    layout->addWidget(wrapped(lblValuesFault));
    layout->addLayout(buttons.layout);
    connect(btnOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &QDialog::reject);
    takeTexts();
    constexpr int shownRows = 10;
    const int rowHeight = fields.empty() ? 0 : rows->sizeHint().height() / static_cast<int>(fields.size());
    const int more = (std::min<int>(static_cast<int>(fields.size()), shownRows) + 1) * rowHeight -
                     scrolled->sizeHint().height();
    resizeWithinScreen(*this, sizeHint() + QSize(0, std::max(0, more)));
}

QWidget* frmValues::boxOf(const Project& project, const ShownField& field) {
    switch (field.value) {
    case LiveValue::Float:
        return floatBox(project, field.index);
    case LiveValue::Boolean:
        return booleanBox(project, field.index);
    case LiveValue::Time:
        return timeBox();
    case LiveValue::Date:
        return dateBox();
    }
    return nullptr;
}

QLineEdit* frmValues::textBox(const QString& name, const QString& text, const QString& placeholder,
                              Take take) {
    auto* const box = named<QLineEdit>(QStringLiteral("txtValue") + name);
    box->setText(text);
    box->setPlaceholderText(placeholder);
    widenTo(box, valueCharacters);
    boxes_.push_back({box, name, std::move(take)});
    connect(box, &QLineEdit::textChanged, this, &frmValues::takeTexts);
    return box;
}

QWidget* frmValues::floatBox(const Project& project, std::size_t index) {
    const FloatVariable& variable = project.RegVar[index];
    const auto set = own_.floats.find(index);
    const std::string shown = floatFieldText(defaultFloat(variable), floatFormat(variable));
    return textBox(nameOfField({LiveValue::Float, index}),
                   set == own_.floats.end() ? QString() : QString::fromStdString(floatText(set->second)),
                   tr("Default: %1").arg(QString::fromStdString(std::string(trimBlanks(shown)))),
                   [this, index](const QString& text) {
                       if (text.isEmpty())
                           own_.floats.erase(index);
                       else
                           own_.floats[index] = enteredFloat(text.toStdString());
                   });
}

QWidget* frmValues::booleanBox(const Project& project, std::size_t index) {
    const BooleanVariable& variable = project.CoilVar[index];
    const auto text = [&](bool on) { return shownLine(on ? variable.onText : variable.offText); };
    auto* const list =
        named<DropDownList>(QStringLiteral("cboValue") + nameOfField({LiveValue::Boolean, index}));
    list->addItems({tr("Default: %1").arg(text(defaultBoolean(variable))), tr("On: %1").arg(text(true)),
                    tr("Off: %1").arg(text(false))});
    list->keepWidth(valueCharacters);
    if (const auto set = own_.booleans.find(index); set != own_.booleans.end())
        list->setCurrentIndex(set->second ? 1 : 2);
    connect(list, &QComboBox::currentIndexChanged, this, [this, index](int row) {
        if (row == 0)
            own_.booleans.erase(index);
        else
            own_.booleans[index] = row == 1;
    });
    return list;
}

QWidget* frmValues::timeBox() {
    return textBox(QStringLiteral("TIME"),
                   own_.time ? QString::fromStdString(timeFieldText(*own_.time)) : QString(),
                   tr("The time now"), [this](const QString& text) {
                       const QTime time = QTime::fromString(text, timeForm);
                       if (!text.isEmpty() && !time.isValid())
                           throw std::invalid_argument("write the time as 14:05:00");
                       own_.time.reset();
                       if (time.isValid())
                           own_.time = LocalTime{2000, 1, 1, time.hour(), time.minute(), time.second()};
                   });
}

QWidget* frmValues::dateBox() {
    return textBox(QStringLiteral("DATE"),
                   own_.date ? QString::fromStdString(dateFieldText(*own_.date)) : QString(),
                   tr("The date now"), [this](const QString& text) {
                       const QDate date = QDate::fromString(text, dateForm);
                       if (!text.isEmpty() && !date.isValid())
                           throw std::invalid_argument("write the date as 24.12.2026");
                       own_.date.reset();
                       if (date.isValid())
                           own_.date = LocalTime{date.year(), date.month(), date.day()};
                   });
}

void frmValues::takeTexts() {
    QString fault;
    for (const Box& box : boxes_) {
        try {
            box.take(box.box->text().trimmed());
        } catch (const std::invalid_argument& mistake) {
            fault = tr("%1: %2").arg(box.name, QString::fromUtf8(mistake.what()));
            break;
        }
    }
    lblValuesFault->setText(fault);
    lblValuesFault->setVisible(!fault.isEmpty());
    btnOK->setEnabled(fault.isEmpty());
}

} // namespace orvista

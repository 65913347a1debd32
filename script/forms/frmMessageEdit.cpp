#include "script/forms/frmMessageEdit.h"

#include "items/MasterView.h"
#include "script/forms/BitmapFrame.h"
#include "script/forms/EffectsFrame.h"
#include "script/forms/MessageColorFrame.h"
#include "script/forms/VariableFrame.h"
#include "script/forms/WizardPreview.h"
#include "widgets/DeviceLineEdit.h"
#include "widgets/DropDownList.h"
#include "widgets/FormParts.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace orvista {

namespace {

constexpr int textType = 0;
constexpr int bitmapType = 1;

} // namespace

frmMessageEdit::frmMessageEdit(const QString& projectFolder, QWidget* parent)
    : QDialog(parent),
      OptMsgType(new QButtonGroup(this)),
      txtText(nullptr),
      bitmapFrame_(nullptr),
      messageColorFrame_(nullptr),
      variableFrame_(nullptr),
      effectsFrame_(nullptr),
      btnOK(nullptr) {
    setObjectName(QStringLiteral("frmMessageEdit"));
    setWindowTitle(QStringLiteral("Message Wizard"));
    setModal(true);

    // Made in the order of the layout, which is the order of the Tab key.
    auto* const grid = new QGridLayout(this);
    grid->addWidget(createTextFrame(), 0, 0, 1, 2);
    grid->addWidget(bitmapFrame_ = new BitmapFrame(projectFolder), 1, 0, 1, 2);
    grid->addWidget(messageColorFrame_ = new MessageColorFrame, 2, 0, 1, 2);
    grid->addWidget(variableFrame_ = new VariableFrame, 3, 0);
    grid->addWidget(effectsFrame_ = new EffectsFrame, 3, 1);
    grid->addLayout(createButtons(), 5, 0, 1, 2);
    grid->setRowStretch(3, 1);

    connect(OptMsgType, &QButtonGroup::idClicked, this, &frmMessageEdit::OptMsgType_Click);
    connect(txtText, &QLineEdit::textChanged, this, &frmMessageEdit::txtText_Change);
    connect(bitmapFrame_, &BitmapFrame::pathChosen, btnOK, [this] { btnOK->setEnabled(true); });
    OptMsgType_Click(textType);
    txtText->setFocus();
}

void frmMessageEdit::explainVariables(std::function<QString(const QString&)> toolTipOf) {
    variableFrame_->explainVariables(std::move(toolTipOf));
}

void frmMessageEdit::showPreview(const Project& project, int columns, const DisplayValues& values,
                                 const MasterView* master) {
    isOfMaster_ = master != nullptr && master->isMaster();
    preview_ = new WizardPreview(project, columns, values, master);
    static_cast<QGridLayout*>(layout())->addWidget(preview_, 4, 0, 1, 2);
    followControls();
    preview_->show(form());
    resizeWithinScreen(*this, sizeHint());
}

void frmMessageEdit::followControls() {
    const auto refresh = [this] { preview_->show(form()); };
    connect(OptMsgType, &QButtonGroup::idClicked, preview_, refresh);
    connect(txtText, &QLineEdit::textChanged, preview_, refresh);
    connect(bitmapFrame_, &BitmapFrame::pathChanged, preview_, refresh);
    for (const auto* const list : findChildren<DropDownList*>())
        connect(list, &QComboBox::currentIndexChanged, preview_, refresh);
}

QWidget* frmMessageEdit::createTextFrame() {
    auto* const frame = new QGroupBox(QStringLiteral("Text"));
    auto* const grid = new QGridLayout(frame);
    const std::array captions{QStringLiteral("Text"), QStringLiteral("Bitmap")};
    for (const int index : {textType, bitmapType}) {
        const auto position = static_cast<std::size_t>(index);
        auto* const option =
            named<QRadioButton>(arrayName(QStringLiteral("OptMsgType"), position), captions.at(position));
        OptMsgType->addButton(option, index);
        grid->addWidget(option, 0, index + 1);
    }
    txtText = named<DeviceLineEdit>(QStringLiteral("txtText"), frame);
    txtText->explain(tr("%v keeps one character free for a live field, %5v five; at most four fields"));
    grid->addWidget(labelFor(txtText, QStringLiteral("Content :")), 1, 0);
    grid->addWidget(txtText, 1, 1, 1, 3);
    grid->setColumnStretch(3, 1);
    return frame;
}

QLayout* frmMessageEdit::createButtons() {
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    connect(btnOK, &QPushButton::clicked, this, &frmMessageEdit::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &QDialog::reject);
    return buttons.layout;
}

void frmMessageEdit::EnableBitmapControls(bool enable) {
    bitmapFrame_->enableBrowsing(enable);
    if (enable)
        btnOK->setEnabled(!bitmapFrame_->path().empty());
}

void frmMessageEdit::EnableTextControls(bool enable) {
    txtText->setEnabled(enable);
    if (enable)
        txtText_Change();
    else
        variableFrame_->enableRows(0);
}

void frmMessageEdit::OptMsgType_Click(int index) {
    EnableBitmapControls(index == bitmapType);
    EnableTextControls(index == textType);
    OptMsgType->button(index)->setChecked(true);
}

void frmMessageEdit::txtText_Change() {
    const PlaceholderScan content = scanPlaceholders(txtText->bytes());
    variableFrame_->enableRows(content.fieldCount());
    btnOK->setEnabled(!content.DisplayText.empty());
}

void frmMessageEdit::btnOK_Click() {
    PartialScript = BuildPartialScript(form(), PathRules::native());
    accept();
}

MessageForm frmMessageEdit::form() const {
    MessageForm form;
    form.bitmap = OptMsgType->checkedId() == bitmapType;
    form.isOfMaster = isOfMaster_;
    form.txtText = txtText->bytes();
    form.txtPath = bitmapFrame_->path();
    messageColorFrame_->readInto(form);
    variableFrame_->readInto(form);
    effectsFrame_->readInto(form);
    return form;
}

} // namespace orvista

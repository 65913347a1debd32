#include "dialogs/frmLic.h"

#include "widgets/FormParts.h"
#include "widgets/LedView.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

namespace {

constexpr int noticeLines = 6;
constexpr int noticeCharacters = 60;
constexpr double productFontScale = 1.2;

constexpr const char* productText = "Orvista " ORVISTA_VERSION " for Ulvo LX-400 series";
constexpr const char* noticeText =
    "Orvista Message Editor prepares the message scripts, variables and addresses of Ulvo LX-400D LED "
    "message displays.\n\n"
    "Quillmark Corp. provides this program as it is, without warranty of any kind. Check every message on "
    "the display before you rely on it.";

QLineEdit* productBox() {
    QLineEdit* const box = shownOnlyBox("txtProduct");
    box->setText(productText);
    box->setAccessibleName("Product");
    box->setFrame(false);
    box->setAlignment(Qt::AlignHCenter);
    QFont font = box->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * productFontScale);
    box->setFont(font);
    return box;
}

QPlainTextEdit* noticeBox() {
    auto* box = new QPlainTextEdit(noticeText);
    box->setObjectName("txtNotice");
    box->setAccessibleName("Notice");
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    widenTo(box, noticeCharacters);
    box->setMinimumHeight(box->fontMetrics().lineSpacing() * noticeLines);
    return box;
}

} // namespace

frmLic::frmLic(QWidget* parent) : QDialog(parent) {
    setObjectName("frmLic");
    setWindowTitle("About Quillmark Corp.");
    auto* picture = new LedView(panelOfText("LX-400D", Led::Orange));
    picture->setObjectName("imgPanel");
    picture->setAccessibleName("LED panel that shows LX-400D");
    auto* cmdOK = namedButton("cmdOK", "OK", this);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmLic::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(picture, 1);
    rows->addWidget(productBox());
    rows->addWidget(noticeBox(), 1);
    rows->addLayout(buttons);
    cmdOK->setFocus();
}

} // namespace orvista

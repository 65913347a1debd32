#include "script/forms/BitmapFrame.h"

#include "model/PathRules.h"
#include "script/MessagePage.h"
#include "widgets/FormParts.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace orvista {

namespace {

/// The file chosen by the user in the platform's notation; empty when there is none.
QString browsedBitmap(QWidget* parent, const QString& startFolder) {
    QFileDialog comdlg(parent);
    comdlg.setObjectName(QStringLiteral("comdlg"));
    // Some platforms' own dialogs tell "*.bmp" from "*.BMP".
    comdlg.setOption(QFileDialog::DontUseNativeDialog);
    comdlg.setFileMode(QFileDialog::ExistingFile);
    comdlg.setNameFilter(QStringLiteral("Bmp File(*.bmp)"));
    comdlg.setDirectory(startFolder.isEmpty() ? QDir::homePath() : startFolder);
    if (comdlg.exec() != QDialog::Accepted || comdlg.selectedFiles().isEmpty())
        return {};
    return QDir::toNativeSeparators(comdlg.selectedFiles().constFirst());
}

} // namespace

BitmapFrame::BitmapFrame(QString projectFolder, QWidget* parent)
    : QGroupBox(QStringLiteral("Bitmap"), parent),
      projectFolder_(std::move(projectFolder)),
      txtPath(shownOnlyBox(QStringLiteral("txtPath"))),
      cmdBrowse(namedButton(QStringLiteral("cmdBrowse"), QStringLiteral("Browse"))),
      lblNote(new QLabel) {
    txtPath->setToolTip(tr("The bitmap the page shows, chosen with Browse"));
    cmdBrowse->setToolTip(tr("Choose a bitmap of the project folder"));
    lblNote->setObjectName(QStringLiteral("lblNote"));

    auto* const grid = new QGridLayout(this);
    grid->addWidget(labelFor(txtPath, QStringLiteral("Path :")), 0, 0);
    grid->addWidget(txtPath, 0, 1);
    grid->addWidget(cmdBrowse, 0, 2);
    grid->addWidget(lblNote, 1, 1, 1, 2);
    connect(txtPath, &QLineEdit::textChanged, this, &BitmapFrame::pathChanged);
    connect(cmdBrowse, &QPushButton::clicked, this, &BitmapFrame::cmdBrowse_Click);
}

void BitmapFrame::enableBrowsing(bool enable) {
    cmdBrowse->setEnabled(enable);
}

std::string BitmapFrame::path() const {
    return txtPath->text().toStdString();
}

void BitmapFrame::cmdBrowse_Click() {
    take(browsedBitmap(this, projectFolder_));
}

void BitmapFrame::take(const QString& chosen) {
    if (!bitmapName(PathRules::native(), chosen.toStdString())) {
        lblNote->setText(tr("Not taken: its name holds a character that the display does not have."));
        return;
    }
    txtPath->setText(chosen);
    lblNote->setText(chosen.isEmpty() || isUploaded(chosen)
                         ? QString()
                         : tr("Only bitmaps of the project folder are uploaded: copy this one there."));
    if (!chosen.isEmpty())
        emit pathChosen();
}

bool BitmapFrame::isUploaded(const QString& bitmap) const {
    // Compares what the two spellings lead to, whatever links and ".." they hold.
    return !projectFolder_.isEmpty() &&
           QFileInfo(QFileInfo(bitmap).absolutePath()) == QFileInfo(projectFolder_);
}

} // namespace orvista

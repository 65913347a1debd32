#include "widgets/FileChoice.h"

#include "widgets/PathText.h"

#include <QDir>
#include <QFileDialog>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>

namespace orvista {

namespace {

/// "png" of "Picture (*.png)".
QString endingOf(const QString& filter) {
    static const QRegularExpression pattern(QStringLiteral(R"(\*\.(\w+))"));
    return pattern.match(filter).captured(1);
}

std::optional<ChosenFile> answerOf(QFileDialog& comdlg, const QStringList& filters) {
    if (comdlg.exec() != QDialog::Accepted || comdlg.selectedFiles().isEmpty())
        return std::nullopt;
    const auto filter = static_cast<int>(filters.indexOf(comdlg.selectedNameFilter()));
    return ChosenFile{pathFromShown(comdlg.selectedFiles().constFirst()), std::max(filter, 0)};
}

void prepare(QFileDialog& comdlg, const FileQuestion& question) {
    comdlg.setObjectName(QStringLiteral("comdlg"));
    comdlg.setWindowTitle(question.title);
    comdlg.setDirectory(question.folder.empty() ? QDir::homePath() : shownPath(question.folder));
    comdlg.setNameFilters(question.filters);
}

} // namespace

void keepNoDialogSettings() {
    // Qt gives up without a word where it cannot write. Windows has its own dialogs, and the registry no such
    // path.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

std::optional<ChosenFile> chooseFileToWrite(const FileQuestion& question, QWidget* parent) {
    QFileDialog comdlg(parent);
    prepare(comdlg, question);
    comdlg.setAcceptMode(QFileDialog::AcceptSave);
    comdlg.setFileMode(QFileDialog::AnyFile);
    comdlg.setDefaultSuffix(endingOf(question.filters.constFirst()));
    QObject::connect(&comdlg, &QFileDialog::filterSelected, &comdlg,
                     [&comdlg](const QString& filter) { comdlg.setDefaultSuffix(endingOf(filter)); });
    if (!question.name.isEmpty())
        comdlg.selectFile(question.name);
    return answerOf(comdlg, question.filters);
}

std::optional<ChosenFile> chooseFileToRead(const FileQuestion& question, QWidget* parent) {
    QFileDialog comdlg(parent);
    prepare(comdlg, question);
    comdlg.setAcceptMode(QFileDialog::AcceptOpen);
    comdlg.setFileMode(QFileDialog::ExistingFile);
    return answerOf(comdlg, question.filters);
}

} // namespace orvista

#include "script/forms/WizardPreview.h"

#include "check/FitTexts.h"
#include "check/PageFitText.h"
#include "display/PageLayout.h"
#include "display/PageText.h"
#include "display/SettledPage.h"
#include "display/forms/MarkedBitmaps.h"
#include "script/WizardLists.h"
#include "widgets/DeviceText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FormParts.h"
#include "widgets/PanelView.h"

#include <QLabel>
#include <QVBoxLayout>

#include <variant>

namespace orvista {

namespace {

/// Null for a project that is none.
const MasterView* masterOf(const MasterView* view) {
    return view != nullptr && view->isMaster() ? view : nullptr;
}

/// The panel's height, in lines of text, where there is room for it.
constexpr int panelLines = 5;

} // namespace

WizardPreview::WizardPreview(const Project& project, int columns, const DisplayValues& values,
                             const MasterView* master, QWidget* parent)
    : QWidget(parent),
      columns_(columns),
      formats_(fieldFormats(masterOf(master) ? master->shown() : project)),
      values_(values),
      master_(masterOf(master)),
      folderBitmaps_(project.ProjPath),
      masterBitmaps_(folderBitmaps_),
      bitmaps_(master_ ? static_cast<const BitmapProvider&>(masterBitmaps_) : folderBitmaps_),
      wizardPreview(named<PanelView>(QStringLiteral("wizardPreview"), LedRaster({columns}))),
      lblWizardFit(named<ElidedLabel>(QStringLiteral("lblWizardFit"))) {
    wizardPreview->setAccessibleName(tr("Preview of the page"));
    wizardPreview->setMinimumSize(1, 1);
    // Forms around it keep their smallest heights only where no widget's height follows its width.
    wizardPreview->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(wizardPreview, 1);
    layout->addWidget(lblWizardFit);
}

QSize WizardPreview::sizeHint() const {
    return {QWidget::sizeHint().width(),
            panelLines * fontMetrics().height() + layout()->spacing() + lblWizardFit->sizeHint().height()};
}

QSize WizardPreview::minimumSizeHint() const {
    return {QWidget::minimumSizeHint().width(), 0};
}

void WizardPreview::show(const MessageForm& form) {
    Programme programme({columns_}, formats_);
    const std::string script = BuildPartialScript(form, PathRules::native());
    programme.add({}, master_ ? master_->filled(script) : script, MarkedBitmaps(bitmaps_));
    if (programme.pageCount() == 0)
        return;
    const DrawnPage& page = programme.pages().front();
    wizardPreview->showRaster(settledPage(programme, 0, values_));
    wizardPreview->setAccessibleDescription(shownLine(pageText(page, formats_, values_)).simplified());
    lblWizardFit->setText(misfits(form, page));
    lblWizardFit->setToolTip(lblWizardFit->text());
}

QString WizardPreview::misfits(const MessageForm& form, const DrawnPage& page) const {
    QStringList texts;
    const auto note = [&texts](const std::string& text) {
        if (!text.empty())
            texts << QString::fromStdString(text);
    };
    note(pageFitText(page, {columns_}, formats_, bitmaps_));
    const PlaceholderScan content = scanPlaceholders(form.txtText);
    std::size_t slot = 0;
    for (const ScriptElement& element : page.elements) {
        const auto* const field = std::get_if<FieldElement>(&element);
        if (!field || slot == content.fieldCount())
            continue;
        note(placeText(wizard::fieldSources().at(form.fields.at(slot).cbVar).shown,
                       shownWidth(*field, formats_), content.places.at(slot)));
        ++slot;
    }
    return texts.join(QStringLiteral("; "));
}

} // namespace orvista

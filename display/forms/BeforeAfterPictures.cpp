#include "display/forms/BeforeAfterPictures.h"

#include "display/FieldFormats.h"
#include "display/PageText.h"
#include "display/SettledPage.h"
#include "display/forms/MarkedBitmaps.h"
#include "items/MasterBitmaps.h"
#include "items/MasterView.h"
#include "model/Lines.h"
#include "widgets/DeviceText.h"
#include "widgets/FormParts.h"
#include "widgets/PanelView.h"

#include <QHBoxLayout>
#include <QLabel>

namespace orvista {

namespace {

/// Of the panels, in the font's lines: high enough for its letters to be read, low enough for a dialog.
constexpr int panelLines = 3;

} // namespace

BeforeAfterPictures::BeforeAfterPictures(const Captions& captions, PreviewSettingSource setting,
                                         QWidget* parent)
    : QWidget(parent), setting_(std::move(setting)) {
    setObjectName(QStringLiteral("beforeAfterPictures"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins({});
    panelBefore = addPanel(QStringLiteral("panelBefore"), captions.before);
    panelAfter = addPanel(QStringLiteral("panelAfter"), captions.after);
    for (QWidget* const part : parts()) {
        QSizePolicy keepsItsPlace = part->sizePolicy();
        keepsItsPlace.setRetainSizeWhenHidden(true);
        part->setSizePolicy(keepsItsPlace);
    }
    setShown(false);
}

PanelView* BeforeAfterPictures::addPanel(const QString& name, const QString& caption) {
    auto* const panel = new PanelView(LedRaster({setting_().columns}));
    panel->setObjectName(name);
    panel->setAccessibleName(tr("Picture: %1").arg(caption));
    panel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    panel->setMinimumWidth(1); // the window's other parts say how wide it is
    panel->setFixedHeight(panelLines * fontMetrics().lineSpacing());
    auto* const label = new QLabel(caption);
    label->setTextFormat(Qt::PlainText);
    auto* const part = static_cast<QHBoxLayout*>(layout());
    part->addWidget(label);
    part->addWidget(panel, 1);
    return panel;
}

void BeforeAfterPictures::showChange(const Project& project, std::string_view before,
                                     std::string_view after) {
    if (!bitmaps_)
        bitmaps_.emplace(project.ProjPath);
    const std::size_t line = firstDifferentLine(before, after);
    const MasterView* const master = setting_().master;
    if (master == nullptr || !master->isMaster())
        return showPages({project, *bitmaps_, before, line}, {project, *bitmaps_, after, line});
    const MasterBitmaps bitmaps(*bitmaps_);
    showPages({master->shown(), bitmaps, master->filled(before), line},
              {master->shown(), bitmaps, master->filled(after), line});
}

void BeforeAfterPictures::showPages(const PictureSource& before, const PictureSource& after) {
    const PreviewSetting setting = setting_();
    draw(*panelBefore, before, setting);
    draw(*panelAfter, after, setting);
    setShown(true);
}

void BeforeAfterPictures::draw(PanelView& panel, const PictureSource& source, const PreviewSetting& setting) {
    const FieldFormats formats = fieldFormats(source.project);
    const Programme programme = programmeOfLine(source.script, source.line, {setting.columns}, formats,
                                                MarkedBitmaps(source.bitmaps));
    const bool isDark = programme.pageCount() == 0;
    panel.showRaster(isDark ? LedRaster(programme.panel()) : settledPage(programme, 0, setting.values));
    panel.setAccessibleDescription(
        isDark ? QString()
               : shownLine(pageText(programme.pages().front(), formats, setting.values)).simplified());
}

void BeforeAfterPictures::showNothing() {
    setShown(false);
}

QList<QWidget*> BeforeAfterPictures::parts() const {
    return findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
}

void BeforeAfterPictures::setShown(bool shown) {
    for (QWidget* const part : parts())
        part->setVisible(shown);
}

} // namespace orvista

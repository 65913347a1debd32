#include "display/forms/DisplayPreview.h"

#include "check/PageFitText.h"
#include "display/PageText.h"
#include "display/SettledPage.h"
#include "display/forms/MarkedBitmaps.h"
#include "display/forms/PictureFile.h"
#include "display/forms/PreviewBar.h"
#include "display/forms/ValuesList.h"
#include "script/BitmapNames.h"
#include "widgets/DeviceText.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/ModalDialogs.h"
#include "widgets/PanelView.h"

#include <QAction>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>

namespace orvista {

namespace {

constexpr int previewFrameMilliseconds = 20;

} // namespace

DisplayPreview::DisplayPreview(const Project& project, DeviceTextEdit& box, Messages& messages,
                               PreviewClock clock, QWidget* parent)
    : QWidget(parent),
      project_(project),
      box_(box),
      messages_(messages),
      clock_(std::move(clock)),
      panel_(new PanelView(LedRaster({PreviewBar::usualColumns}))),
      list_(new ValuesList(project,
                           [this] {
                               readAll();
                               return fieldsShown(player_.programme().pages());
                           })),
      row_(new PreviewBar(list_)),
      copyPicture_(new QAction(tr("Copy Picture"), panel_)),
      savePicture_(new QAction(tr("Save Picture…"), panel_)),
      bitmapWatch_(new BitmapWatch(*this, [this] { takeBitmaps(); })),
      player_(Programme({PreviewBar::usualColumns}, {})),
      cursorPage_(*box.document()),
      quiet_(
          QuietTimer::usual, [this] { isEnabled() ? readLongScript() : quiet_.start(); }, this) {
    setObjectName(QStringLiteral("displayPreview"));
    buildLayout();
    frames_.setTimerType(Qt::PreciseTimer);
    frames_.setInterval(previewFrameMilliseconds);
    connectControls();
}

DisplayPreview::~DisplayPreview() = default;

void DisplayPreview::buildLayout() {
    panel_->setObjectName(QStringLiteral("panelPreview"));
    panel_->setAccessibleName(tr("Preview of the display"));
    panel_->setFocusPolicy(Qt::TabFocus);
    panel_->setContextMenuPolicy(Qt::ActionsContextMenu);
    panel_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    panel_->setMinimumSize(1, 3 * fontMetrics().height());
    savePicture_->setObjectName(QStringLiteral("miPreviewSavePicture"));
    savePicture_->setEnabled(false);
    connect(savePicture_, &QAction::triggered, this, &DisplayPreview::savePicture);
    copyPicture_->setObjectName(QStringLiteral("miPreviewCopyPicture"));
    copyPicture_->setEnabled(false);
    connect(copyPicture_, &QAction::triggered, this, [this] { copyAsPicture(panel_->shown()); });
    panel_->addActions({copyPicture_, savePicture_});

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(panel_, 1);
    layout->addWidget(row_);
}

void DisplayPreview::connectControls() {
    connect(&box_, &QPlainTextEdit::textChanged, this, &DisplayPreview::takeText);
    connect(&box_, &QPlainTextEdit::cursorPositionChanged, this, &DisplayPreview::takeCursor);
    box_.installEventFilter(this);
    connect(&frames_, &QTimer::timeout, this, &DisplayPreview::takeFrame);
    connect(row_, &PreviewBar::playPressed, this, &DisplayPreview::play);
    connect(row_, &PreviewBar::backPressed, this, [this] { turnPage(-1); });
    connect(row_, &PreviewBar::forwardPressed, this, [this] { turnPage(1); });
    connect(row_, &PreviewBar::timeChosen, this, [this](int time) {
        readAll();
        player_.seek(time);
        render();
    });
    connect(list_, &ValuesList::valuesChanged, this, &DisplayPreview::takeValues);
    connect(row_, &PreviewBar::displayChosen, this, &DisplayPreview::displayChosen);
    connect(row_, &PreviewBar::columnsChosen, this, [this] {
        emit columnsChanged();
        emit settingChanged();
        if (isVisible())
            readScript();
    });
}

void DisplayPreview::setMasterFitRow(QHBoxLayout& row) {
    row_->setMasterFitRow(row);
}

QSize DisplayPreview::sizeHint() const {
    // As high as a panel of the usual width is in a window of the usual size.
    const int cell = std::max(3, fontMetrics().height() / 3);
    const QSize panel = PanelPicture::roomFor({PreviewBar::usualColumns}, cell);
    return {panel.width(), panel.height() + layout()->spacing() + row_->sizeHint().height()};
}

void DisplayPreview::setShown(bool shown) {
    setVisible(shown);
    row_->setFitShown(shown);
    emit shownChanged(shown);
}

int DisplayPreview::columns() const {
    return row_->columns();
}

void DisplayPreview::setColumns(int columns) {
    row_->setColumns(columns);
}

DisplayValues DisplayPreview::shownValues() const {
    return list_->values().at(clock_.localTime());
}

void DisplayPreview::setHeldValues(const std::optional<DisplayValues>& held) {
    list_->setHeld(held);
}

void DisplayPreview::takeValues() {
    values_ = list_->values();
    emit settingChanged();
    if (isVisible())
        render();
}

void DisplayPreview::takeBitmaps() {
    readScript();
    emit bitmapsChanged();
}

bool DisplayPreview::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::EnabledChange && isVisible())
        readScript();
    return QWidget::eventFilter(watched, event);
}

void DisplayPreview::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    readProject();
    readScript();
}

void DisplayPreview::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    frames_.stop();
    quiet_.stop();
    player_.stopAt(player_.page());
}

void DisplayPreview::restart() {
    player_.stopAt(0);
    frames_.stop();
    if (!isVisible())
        return;
    readProject();
    readScript();
}

void DisplayPreview::followProject() {
    if (!isVisible() || bitmapFolder_ == project_.ProjPath)
        return;
    readProject();
    readScript();
}

void DisplayPreview::followMaster() {
    row_->showDisplays(*master_);
    if (!isVisible())
        return;
    readProject();
    readScript();
}

std::string DisplayPreview::filled(std::string script) const {
    return isOfMaster() ? master_->filled(script) : std::move(script);
}

const BitmapProvider& DisplayPreview::bitmaps() const {
    if (isOfMaster())
        return *masterBitmaps_;
    return *bitmaps_;
}

void DisplayPreview::readProject() {
    formats_ = fieldFormats(isOfMaster() ? master_->shown() : project_);
    values_ = list_->values();
    if (!bitmaps_ || bitmapFolder_ != project_.ProjPath) {
        bitmapFolder_ = project_.ProjPath;
        bitmaps_.emplace(bitmapFolder_);
        masterBitmaps_.emplace(*bitmaps_);
    }
}

void DisplayPreview::takeText() {
    if (!isVisible())
        return;
    if (isLong())
        quiet_.start();
    else
        readScript();
}

void DisplayPreview::readLongScript() {
    if (player_.isPlaying() || !readCursorPage())
        readScript();
}

bool DisplayPreview::readCursorPage() {
    const auto script = cursorPage_.script(box_.textCursor());
    if (!script)
        return false;
    Programme programme({columns()}, formats_);
    programme.add({}, filled(script->bytes), MarkedBitmaps(bitmaps()));
    // Lines before the page go with the one before it, which this does not know.
    if (programme.pageCount() != 1 || programme.pages().front().firstLine > script->cursorLine)
        return false;
    pageAlone_ = std::move(programme);
    fitPage_ = nullptr;
    shownRevision_ = box_.document()->revision();
    render();
    return true;
}

void DisplayPreview::readAll() {
    if (pageAlone_ || quiet_.isActive())
        readScript();
}

void DisplayPreview::readScript() {
    quiet_.stop();
    pageAlone_.reset();
    fitPage_ = nullptr;
    const bool holdsMessage = box_.isEnabled();
    Programme programme({columns()}, formats_);
    if (holdsMessage)
        programme.add({}, filled(box_.bytes()), MarkedBitmaps(bitmaps()));
    player_.show(std::move(programme));
    bitmapWatch_->watch(bitmaps(), bitmapNames(player_.programme().pages()));
    positions_ = ScriptPositions(*box_.document());
    shownRevision_ = box_.document()->revision();
    row_->setEnabled(holdsMessage);
    copyPicture_->setEnabled(holdsMessage);
    savePicture_->setEnabled(holdsMessage);
    if (player_.isPlaying() && holdsMessage)
        render();
    else
        stopAtCursor();
}

void DisplayPreview::stopAtCursor() {
    frames_.stop();
    const std::size_t line = positions_.lineAt(box_.textCursor().position());
    player_.stopAt(pageOfLine(player_.programme(), line));
    if (isLong()) {
        const DrawnPage* const page = shownPage();
        cursorPage_.follow(box_.textCursor(), page ? positions_.positionOf(page->firstLine, 1) : -1);
    }
    render();
}

void DisplayPreview::takeCursor() {
    // The cursor moves before its edit is told of: in the text as it was read, its line may be of another
    // page.
    const bool isEdited = box_.document()->revision() != shownRevision_;
    if (!isVisible() || quiet_.isActive() || player_.isPlaying() || isEdited)
        return;
    if (pageAlone_)
        readLongScript();
    else
        stopAtCursor();
}

void DisplayPreview::play() {
    readAll();
    lookAtBitmaps();
    if (player_.isPlaying()) {
        player_.pause();
        frames_.stop();
    } else {
        player_.play(clock_.milliseconds());
        frames_.start();
    }
    render();
}

void DisplayPreview::turnPage(int by) {
    readAll();
    const std::size_t page = player_.page() + static_cast<std::size_t>(by);
    if (page >= player_.programme().pageCount())
        return;
    if (player_.isPlaying())
        player_.seek(player_.programme().pageStart(page));
    else
        player_.stopAt(page);
    render();
}

bool DisplayPreview::isLong() const {
    return box_.document()->characterCount() > longScript;
}

bool DisplayPreview::isHeld() const {
    return isModalDialogOpen() || !isEnabled();
}

void DisplayPreview::takeFrame() {
    const std::int64_t now = clock_.milliseconds();
    if (isHeld())
        return player_.skip(now);
    player_.advance(now);
    render();
}

const DrawnPage* DisplayPreview::shownPage() const {
    if (pageAlone_)
        return &pageAlone_->pages().front();
    const auto& pages = player_.programme().pages();
    return player_.page() < pages.size() ? &pages[player_.page()] : nullptr;
}

void DisplayPreview::render() {
    const DisplayValues values = values_.at(clock_.localTime());
    const Programme& programme = player_.programme();
    const DrawnPage* const page = shownPage();
    panel_->showRaster(pageAlone_ ? settledPage(*pageAlone_, 0, values) : player_.raster(values));
    row_->show(
        {player_.page(), programme.pageCount(), player_.time(), programme.duration(), player_.isPlaying()});
    showFit(page);
    describe(page, values);
}

void DisplayPreview::showFit(const DrawnPage* page) {
    // While it plays, the same page is drawn again and again.
    if (page && page == fitPage_)
        return;
    fitPage_ = page;
    row_->showFit(page ? QString::fromStdString(pageFitText(*page, {columns()}, formats_, bitmaps()))
                       : QString());
}

void DisplayPreview::describe(const ScriptPage* page, const DisplayValues& values) {
    const QString text = page ? shownLine(pageText(*page, formats_, values)).simplified() : QString();
    if (text != panel_->accessibleDescription())
        panel_->setAccessibleDescription(text);
}

void DisplayPreview::savePicture() {
    saveAsPicture(panel_->shown(), project_, messages_, this);
}

} // namespace orvista

#include "display/forms/PreviewBar.h"

#include "display/forms/DisplaysList.h"
#include "display/forms/ShapeButton.h"
#include "display/forms/ValuesList.h"
#include "items/MasterView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FormParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <algorithm>
#include <limits>

namespace orvista {

namespace {

constexpr int sliderStep = 100;      ///< milliseconds, by an arrow key
constexpr int sliderPlayStep = 200;  ///< while it plays
constexpr int sliderPageStep = 1000; ///< by Page Up and Page Down

int sliderTime(std::int64_t milliseconds) {
    return static_cast<int>(std::min<std::int64_t>(milliseconds, std::numeric_limits<int>::max()));
}

ShapeButton* signButton(const QString& name, ShapeButton::Shape shape, const QString& purpose) {
    auto* const button = named<ShapeButton>(name, shape);
    button->setAccessibleName(purpose);
    button->setToolTip(purpose);
    return button;
}

} // namespace

PreviewBar::PreviewBar(ValuesList* values, QWidget* parent)
    : QWidget(parent),
      btnPreviewPlay(signButton(QStringLiteral("btnPreviewPlay"), ShapeButton::Shape::Play, tr("Play"))),
      btnPreviewBack(
          signButton(QStringLiteral("btnPreviewBack"), ShapeButton::Shape::Back, tr("Page before"))),
      lblPreviewPage(named<QLabel>(QStringLiteral("lblPreviewPage"))),
      btnPreviewForward(
          signButton(QStringLiteral("btnPreviewForward"), ShapeButton::Shape::Forward, tr("Next page"))),
      sldPreviewTime(named<QSlider>(QStringLiteral("sldPreviewTime"), Qt::Horizontal)),
      spnPreviewColumns(named<QSpinBox>(QStringLiteral("spnPreviewColumns"))),
      cboPreviewValues(values),
      cboPreviewDisplay(new DisplaysList),
      lblPreviewFit(named<ElidedLabel>(QStringLiteral("lblPreviewFit"))),
      row_(new QHBoxLayout(this)) {
    sldPreviewTime->setAccessibleName(tr("Time within the message, in milliseconds"));
    sldPreviewTime->setToolTip(tr("Time within the message"));
    sldPreviewTime->setFocusPolicy(Qt::TabFocus);
    sldPreviewTime->setSingleStep(sliderStep);
    sldPreviewTime->setPageStep(sliderPageStep);
    spnPreviewColumns->setRange(minimumColumns, maximumColumns);
    spnPreviewColumns->setValue(usualColumns);
    spnPreviewColumns->setFocusPolicy(Qt::StrongFocus);
    spnPreviewColumns->setToolTip(tr("How many dots the display is wide"));
    buildLayout();
    connect(btnPreviewPlay, &QToolButton::clicked, this, &PreviewBar::playPressed);
    connect(btnPreviewBack, &QToolButton::clicked, this, &PreviewBar::backPressed);
    connect(btnPreviewForward, &QToolButton::clicked, this, &PreviewBar::forwardPressed);
    connect(sldPreviewTime, &QSlider::valueChanged, this, &PreviewBar::timeChosen);
    connect(spnPreviewColumns, &QSpinBox::valueChanged, this, &PreviewBar::columnsChosen);
    connect(cboPreviewDisplay, &DisplaysList::displayChosen, this, &PreviewBar::displayChosen);
}

void PreviewBar::buildLayout() {
    row_->setContentsMargins({});
    row_->addWidget(btnPreviewPlay);
    row_->addWidget(btnPreviewBack);
    row_->addWidget(lblPreviewPage);
    row_->addWidget(btnPreviewForward);
    row_->addWidget(sldPreviewTime, 1);
    row_->addWidget(labelFor(spnPreviewColumns, tr("Columns:")));
    row_->addWidget(spnPreviewColumns);
    row_->addWidget(cboPreviewValues);
    row_->addWidget(cboPreviewDisplay);
    row_->addWidget(lblPreviewFit);
    lblPreviewPage->setAlignment(Qt::AlignCenter);
    lblPreviewPage->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00 of 00")));
    sldPreviewTime->setMinimumWidth(8 * fontMetrics().averageCharWidth());
}

void PreviewBar::show(const State& state) {
    const auto shape = state.isPlaying ? ShapeButton::Shape::Pause : ShapeButton::Shape::Play;
    if (shape != btnPreviewPlay->shape()) {
        btnPreviewPlay->setShape(shape);
        btnPreviewPlay->setAccessibleName(state.isPlaying ? tr("Pause") : tr("Play"));
        btnPreviewPlay->setToolTip(btnPreviewPlay->accessibleName());
    }
    btnPreviewBack->setEnabled(state.page > 0);
    btnPreviewForward->setEnabled(state.page + 1 < state.pageCount);
    lblPreviewPage->setText(state.pageCount == 0 ? QString()
                                                 : tr("%1 of %2").arg(state.page + 1).arg(state.pageCount));
    showTime(state);
}

void PreviewBar::showDisplays(const MasterView& view) {
    cboPreviewDisplay->show(view);
    QHBoxLayout* const row = view.isMaster() && masterFitRow_ ? masterFitRow_ : row_;
    if (row->indexOf(lblPreviewFit) < 0)
        row->addWidget(lblPreviewFit);
}

void PreviewBar::showFit(const QString& text) {
    lblPreviewFit->setText(text);
    lblPreviewFit->setToolTip(text);
}

void PreviewBar::setFitShown(bool shown) {
    lblPreviewFit->setVisible(shown);
}

void PreviewBar::showTime(const State& state) {
    const QSignalBlocker blocker(sldPreviewTime);
    sldPreviewTime->setMaximum(sliderTime(state.duration));
    // While it plays, the handle is moved when it would be seen to move, but a few times a second at most:
    // all that lies behind the slider is painted with it.
    const std::int64_t moved = std::abs(state.time - sldPreviewTime->value());
    const bool isSeen = moved * sldPreviewTime->width() >= state.duration && moved >= sliderPlayStep;
    if (!state.isPlaying || isSeen)
        sldPreviewTime->setValue(sliderTime(state.time));
}

int PreviewBar::columns() const {
    return spnPreviewColumns->value();
}

void PreviewBar::setColumns(int columns) {
    spnPreviewColumns->setValue(columns);
}

} // namespace orvista

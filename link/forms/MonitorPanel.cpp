#include "link/forms/MonitorPanel.h"

#include "display/FolderBitmaps.h"
#include "display/RasterAt.h"
#include "display/SettledPage.h"
#include "items/HeldValues.h"
#include "items/forms/LabelCell.h"
#include "model/Numbers.h"
#include "model/Windows1252.h"
#include "widgets/FormParts.h"
#include "widgets/ModalDialogs.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/PanelView.h"
#include "widgets/SeenDelay.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr double shortestInterval = 0.5;
constexpr double longestInterval = 10;
constexpr double usualInterval = 1;
constexpr std::int64_t markMilliseconds = 3'000;
/// Pages stand still here, so that this is soon enough for the next.
constexpr int monitorFrameMilliseconds = 200;

QString timeText(const LocalTime& time) {
    return QString::fromStdString(timeFieldText(time));
}

/// A coil that is on, or a float with a bit set.
bool isSomethingOn(const DisplayItem& item) {
    return std::ranges::any_of(item.words(), [](std::uint16_t word) { return word != 0; });
}

bool isSamePlace(const DisplayItem& item, const DisplayItem& other) {
    return item.item == other.item && item.address == other.address;
}

/// The page that is on at a time, as it stands when its entering effect is over.
LedRaster standingPage(const Programme& programme, const DisplayValues& values, std::int64_t time) {
    const Programme::Moment moment = programme.momentAt(time);
    if (moment.step == nullptr)
        return rasterAt(programme, values, time);
    return settledPage(programme, static_cast<std::size_t>(moment.page - programme.pages().data()), values);
}

} // namespace

MonitorPanel::MonitorPanel(const Project& project, int columns, PreviewClock clock, std::uint16_t port,
                           std::function<std::vector<Item>()> notAppliedItems)
    : project_(project),
      columns_(columns),
      clock_(std::move(clock)),
      notAppliedItems_(std::move(notAppliedItems)),
      monitor_(new DisplayMonitor(project, port, this)),
      address_(project.IP),
      btnMonitorStart(namedButton(QStringLiteral("btnMonitorStart"), tr("Start"))),
      btnMonitorStop(namedButton(QStringLiteral("btnMonitorStop"), tr("Stop"))),
      spnMonitorSeconds(named<QDoubleSpinBox>(QStringLiteral("spnMonitorSeconds"))),
      chkMonitorOnlyOn(named<QCheckBox>(QStringLiteral("chkMonitorOnlyOn"), tr("Only what is on"))),
      btnMonitorTake(namedButton(QStringLiteral("btnMonitorTake"), tr("Take into Tester"))),
      lblMonitorState(named<QLabel>(QStringLiteral("lblMonitorState"))),
      textsDelay_(new SeenDelay(*this, [this] { readProject(); })) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, layout->spacing(), 0, 0);
    layout->addLayout(buildControls());
    layout->addWidget(lblMonitorState);
    layout->addWidget(buildViews(columns), 1);
    connect(btnMonitorStart, &QPushButton::clicked, this, &MonitorPanel::btnMonitorStart_Click);
    connect(btnMonitorStop, &QPushButton::clicked, this, &MonitorPanel::btnMonitorStop_Click);
    connect(btnMonitorTake, &QPushButton::clicked, this, &MonitorPanel::btnMonitorTake_Click);
    connect(chkMonitorOnlyOn, &QCheckBox::toggled, this, &MonitorPanel::showOnly);
    connect(spnMonitorSeconds, &QDoubleSpinBox::valueChanged, this, [this](double seconds) {
        monitor_->setInterval(std::chrono::milliseconds(qRound(seconds * 1000)));
        showState();
    });
    connect(monitor_, &DisplayMonitor::wasRead, this, [this] { readAt_ = clock_.localTime(); });
    connect(monitor_, &DisplayMonitor::changed, this, &MonitorPanel::showReading);
    connect(tblMonitor, &RowsTable::rowActivated, this,
            [this](int row) { emit placeChosen({items_.at(static_cast<std::size_t>(row)).item}); });
    connect(tblMonitor, &RowsTable::rowLeft, this, &ProjectPanel::rowLeft);
    connect(&frames_, &QTimer::timeout, this, &MonitorPanel::showPanel);
    frames_.setInterval(monitorFrameMilliseconds);
    endOfMarks_.setSingleShot(true);
    connect(&endOfMarks_, &QTimer::timeout, this, &MonitorPanel::endMarks);
    showReading();
}

QBoxLayout* MonitorPanel::buildControls() {
    btnMonitorStart->setToolTip(tr("Read the display at the address of the System page repeatedly"));
    btnMonitorStop->setToolTip(tr("Stop reading"));
    btnMonitorTake->setToolTip(tr("Tick the boxes of the TCP Tester page as the display has its messages, "
                                  "so that Update switches no others off"));
    chkMonitorOnlyOn->setToolTip(tr("Show only messages and variables that are on or not 0"));
    spnMonitorSeconds->setRange(shortestInterval, longestInterval);
    spnMonitorSeconds->setSingleStep(shortestInterval);
    spnMonitorSeconds->setDecimals(1);
    spnMonitorSeconds->setValue(usualInterval);
    spnMonitorSeconds->setSuffix(tr(" s"));
    spnMonitorSeconds->setToolTip(tr("How often the display is read, 0.5 to 10 seconds"));
    lblMonitorState->setTextFormat(Qt::PlainText);
    lblMonitorState->setWordWrap(true);
    auto* const row = new QHBoxLayout;
    row->addWidget(btnMonitorStart);
    row->addWidget(btnMonitorStop);
    row->addWidget(labelFor(spnMonitorSeconds, tr("Every")));
    row->addWidget(spnMonitorSeconds);
    row->addWidget(chkMonitorOnlyOn);
    row->addStretch(1);
    row->addWidget(btnMonitorTake);
    return row;
}

QWidget* MonitorPanel::buildViews(int columns) {
    tblMonitor = named<RowsTable>(QStringLiteral("tblMonitor"),
                                  QStringList{tr("Item"), tr("Label"), tr("Address"), tr("State"),
                                              tr("Raw Words"), tr("Text"), tr("Last Change")});
    tblMonitor->setAccessibleName(tr("What the display holds"));
    tblMonitor->setRowHeight(fontMetrics().lineSpacing() + fontMetrics().lineSpacing() / 3);
    monitorPanel = named<PanelView>(QStringLiteral("monitorPanel"), LedRaster({columns}));
    monitorPanel->setAccessibleName(tr("The display as it should look"));
    auto* const views = new QSplitter;
    views->setChildrenCollapsible(false);
    views->addWidget(tblMonitor);
    views->addWidget(monitorPanel);
    // The picture shrinks before the table has to.
    constexpr int smallestPicture = 20;
    monitorPanel->setMinimumWidth(smallestPicture * fontMetrics().averageCharWidth());
    views->setStretchFactor(0, 3);
    views->setStretchFactor(1, 2);
    views->setSizes({300, 200});
    return views;
}

void MonitorPanel::btnMonitorStart_Click() {
    monitor_->start();
}

void MonitorPanel::btnMonitorStop_Click() {
    monitor_->stop();
}

void MonitorPanel::btnMonitorTake_Click() {
    if (monitor_->isCurrent())
        emit takeAsked(items_);
}

void MonitorPanel::setColumns(int columns) {
    columns_ = columns;
    beginProgramme();
    showPanel();
}

void MonitorPanel::follow() {
    if (address_ != project_.IP) {
        address_ = project_.IP;
        monitor_->clear();
    }
    textsDelay_->start();
}

void MonitorPanel::closeForUser() {
    monitor_->stop();
}

void MonitorPanel::markNotApplied() {
    if (isVisible())
        showRows();
}

void MonitorPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    window()->installEventFilter(this);
    showReading();
}

void MonitorPanel::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    frames_.stop();
}

void MonitorPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::EnabledChange || isEnabled())
        return;
    monitor_->stop();
    monitor_->clear();
}

bool MonitorPanel::eventFilter(QObject* watched, QEvent* event) {
    // The window was closed, or the program ends; a minimized window is hidden by the system.
    if (watched == window() && event->type() == QEvent::Hide && !event->spontaneous())
        monitor_->stop();
    return QWidget::eventFilter(watched, event);
}

void MonitorPanel::readProject() {
    texts_.reset();
    programme_.reset();
    showReading();
}

void MonitorPanel::showReading() {
    noteChanges();
    showState();
    if (!isVisible())
        return;
    showRows();
    if (!programme_ || heldCoils(items_) != coils_)
        beginProgramme();
    showPanel();
    if (monitor_->isRunning() && programme_->pageCount() > 0)
        frames_.start();
    else
        frames_.stop();
}

void MonitorPanel::noteChanges() {
    const auto& read = monitor_->items();
    if (!read) {
        items_.clear();
        changes_.clear();
    }
    if (!read || *read == items_)
        return;
    changes_.resize(read->size());
    for (std::size_t row = 0; row < read->size(); ++row) {
        if (row >= items_.size() || !isSamePlace((*read)[row], items_[row]))
            changes_[row].reset();
        else if ((*read)[row] != items_[row])
            changes_[row] = {clock_.milliseconds(), readAt_};
    }
    items_ = *read;
}

void MonitorPanel::showState() {
    const bool isRunning = monitor_->isRunning();
    lblMonitorState->setText(stateText());
    // The keyboard goes on at the other button. Without a project all of the panel is disabled besides.
    QPushButton* const used = isRunning ? btnMonitorStart : btnMonitorStop;
    QPushButton* const next = isRunning ? btnMonitorStop : btnMonitorStart;
    next->setEnabled(true);
    if (used->isEnabledTo(this))
        disableUsed(used, next);
    btnMonitorTake->setEnabled(monitor_->isCurrent());
}

QString MonitorPanel::stateText() const {
    return items_.empty() ? readingText() : tr("%1 (as of %2)").arg(readingText(), timeText(readAt_));
}

QString MonitorPanel::readingText() const {
    const QString address = QString::fromStdString(utf8FromWindows1252(project_.IP));
    if (!monitor_->isRunning())
        return tr("Stopped");
    if (address.isEmpty() && !monitor_->failure().isEmpty())
        return tr("No address on the System page. Tries again after %1.")
            .arg(QString::fromStdString(secondsText(monitor_->pause())));
    if (!monitor_->failure().isEmpty())
        return tr("%1: %2. Tries again after %3.")
            .arg(address, monitor_->failure(), QString::fromStdString(secondsText(monitor_->pause())));
    if (items_.empty())
        return tr("Connecting to %1 …").arg(address);
    QString reading =
        tr("Reading %1 every %2").arg(address, QString::fromStdString(secondsText(monitor_->interval())));
    const std::string beyond = unreachableItems(items_);
    if (beyond.empty())
        return reading;
    return tr("%1, except items that the address map puts beyond 0 to 65535: %2")
        .arg(reading, QString::fromStdString(beyond));
}

bool MonitorPanel::isMarked(std::size_t row) const {
    return changes_[row] && clock_.milliseconds() - changes_[row]->milliseconds < markMilliseconds;
}

TableRow MonitorPanel::cells(std::size_t row) const {
    const DisplayItem& item = items_[row];
    TableRow cells(columnCount);
    cells[Name] = {QString::fromStdString(item.name()), static_cast<int>(row)};
    cells[Label] = labelCell(notes_->of(item.item));
    cells[Address] = {QString::number(item.address), static_cast<qlonglong>(item.address)};
    if (!item.isAddressable) {
        cells[State] = {tr("no address")};
        return cells;
    }
    cells[State] = {QString::fromStdString(valueText(item))};
    if (item.isFloat())
        cells[State].sortKey = item.value();
    cells[Raw] = {QString::fromStdString(wordsText(item))};
    cells[Text] = {QString::fromStdString(texts_->of(item))};
    if (changes_[row])
        cells[Changed] = {timeText(changes_[row]->time)};
    for (TableCell& cell : cells) {
        cell.isFaint = !isSomethingOn(item);
        cell.isMarked = isMarked(row);
    }
    return cells;
}

void MonitorPanel::awaitEndOfMarks() {
    // Readings may be further apart than a mark lasts, or have ended.
    std::int64_t first = markMilliseconds + 1;
    for (std::size_t row = 0; row < changes_.size(); ++row)
        if (isMarked(row))
            first = std::min(first, changes_[row]->milliseconds + markMilliseconds - clock_.milliseconds());
    if (first <= markMilliseconds)
        endOfMarks_.start(static_cast<int>(first));
    else
        endOfMarks_.stop();
}

void MonitorPanel::endMarks() {
    if (isModalDialogOpen())
        endOfMarks_.start(markMilliseconds);
    else if (isVisible())
        showRows();
}

void MonitorPanel::showRows() {
    if (!texts_ && !items_.empty())
        texts_.emplace(project_);
    const std::vector<Item> notApplied = notAppliedItems_();
    std::vector<TableRow> rows;
    for (std::size_t row = 0; row < items_.size(); ++row) {
        rows.push_back(cells(row));
        rows.back()[Text].text += notAppliedMark(notApplied, items_[row].item);
    }
    tblMonitor->setRows(std::move(rows));
    awaitEndOfMarks();
    if (chkMonitorOnlyOn->isChecked())
        showOnly();
}

void MonitorPanel::showOnly() {
    std::vector<bool> shown;
    if (chkMonitorOnlyOn->isChecked())
        for (const DisplayItem& item : items_)
            shown.push_back(isSomethingOn(item));
    tblMonitor->setShownRows(std::move(shown));
}

void MonitorPanel::beginProgramme() {
    coils_ = heldCoils(items_);
    if (monitor_->isRunning())
        programmeStart_ = clock_.milliseconds();
    programme_ =
        deviceProgramme(project_, coils_, PlayList::inOrder(), FolderBitmaps(project_.ProjPath), {columns_});
    QStringList on;
    for (const DisplayItem& item : items_)
        if (item.isMessage() && item.isOn())
            on << QString::fromStdString(item.name());
    monitorPanel->setAccessibleDescription(on.isEmpty() ? tr("Dark: no message is on")
                                                        : tr("On: %1").arg(on.join(QStringLiteral(", "))));
}

DisplayValues MonitorPanel::values() const {
    DisplayValues values = heldValues(items_);
    values.clock = pictured_.time;
    return values;
}

void MonitorPanel::showPanel() {
    if (!isVisible() || !programme_ || isModalDialogOpen())
        return;
    if (monitor_->isRunning())
        pictured_ = {clock_.milliseconds(), clock_.localTime()};
    monitorPanel->showRaster(standingPage(*programme_, values(), pictured_.milliseconds - programmeStart_));
}

} // namespace orvista

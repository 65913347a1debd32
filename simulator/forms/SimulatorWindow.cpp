#include "simulator/forms/SimulatorWindow.h"

#include "simulator/Announcement.h"
#include "simulator/DeviceView.h"
#include "simulator/Snapshot.h"
#include "simulator/forms/FaultsMenu.h"
#include "simulator/forms/ItemsTable.h"
#include "simulator/forms/LogView.h"
#include "simulator/forms/PlaceBeside.h"

#include <QFileDialog>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QSaveFile>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

namespace orvista {

namespace {

QWidget* titled(const QString& title, QWidget* content) {
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(title);
    label->setBuddy(content);
    layout->addWidget(label);
    layout->addWidget(content);
    return box;
}

/// What is said of the services that there are, or of those that there are not.
QStringList serviceLines(const SimulatedDevice& device, bool areThere) {
    QStringList lines;
    if (device.modbus().errorText().isEmpty() == areThere)
        lines << modbusLine(device);
    if ((device.transfer().port() != 0) == areThere)
        lines << transferLine(device);
    return lines;
}

} // namespace

SimulatorWindow::SimulatorWindow(SimulatedDevice& device, QWidget* parent)
    : QMainWindow(parent), device_(device) {
    setObjectName("simulatorWindow");
    setWindowTitle(tr("Simulated LX-400D"));
    connect(&device, &SimulatedDevice::logged, &log_, &LogModel::append);
    setCentralWidget(makeCentre());
    makeMenus();
    auto* services = new QLabel(serviceLines(device, true).join("   ·   "));
    services->setObjectName("services");
    statusBar()->addWidget(services, 1);
    resize(sizeHint().boundedTo(screen()->availableSize()));
}

QSize SimulatorWindow::sizeHint() const {
    const QSize own = QMainWindow::sizeHint();
    return {own.width(), own.height() + 14 * fontMetrics().height()};
}

QWidget* SimulatorWindow::makeCentre() {
    auto* lower = new QSplitter(Qt::Horizontal);
    lower->addWidget(titled(tr("On"), new ItemsTable(device_)));
    lower->addWidget(titled(tr("Requests"), new LogView(log_)));
    lower->setStretchFactor(0, 1);
    lower->setStretchFactor(1, 3);
    const int generousWidth = 100 * fontMetrics().height(); // shared out in proportion
    lower->setSizes({generousWidth * 3 / 10, generousWidth * 7 / 10});
    lower->setChildrenCollapsible(false);
    auto* halves = new QSplitter(Qt::Vertical);
    halves->addWidget(makePanel());
    halves->addWidget(lower);
    halves->setStretchFactor(0, 0);
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);
    auto* centre = new QWidget;
    auto* layout = new QVBoxLayout(centre);
    if (const QStringList missing = serviceLines(device_, false); !missing.empty())
        layout->addWidget(makePortNotice(missing));
    layout->addWidget(halves, 1);
    return centre;
}

QWidget* SimulatorWindow::makePanel() {
    auto* const nothingOn = new QLabel;
    nothingOn->setObjectName("nothingOn");
    nothingOn->setWordWrap(true);
    const auto follow = [this, nothingOn] {
        // The line keeps its room, so that the panel stays as large as it is.
        const bool canBeReached = device_.modbus().errorText().isEmpty();
        nothingOn->setText(device_.messageCoils() != MessageCoils() ? QString()
                           : canBeReached
                               ? tr("No message is on. The TCP Tester page of the editor switches them on.")
                               : tr("No message is on."));
    };
    connect(&device_, &SimulatedDevice::changed, nothingOn, follow);
    follow();
    auto* const box = new QWidget;
    auto* const layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new DeviceView(device_), 1);
    layout->addWidget(nothingOn);
    return box;
}

void SimulatorWindow::standBeside(const QRect& other) {
    setAttribute(Qt::WA_ShowWithoutActivating); // the keyboard stays where the user goes on
    const QScreen* const shared = QGuiApplication::screenAt(other.center());
    if (!shared)
        return;
    if (const auto place = placeBeside(other, shared->availableGeometry(), {size(), minimumSizeHint()})) {
        resize(place->size());
        move(place->topLeft());
    }
}

QWidget* SimulatorWindow::makePortNotice(const QStringList& missing) {
    auto* notice = new QLabel(missing.join(u'\n'));
    notice->setObjectName("portNotice");
    notice->setWordWrap(true);
    notice->setFrameShape(QFrame::StyledPanel);
    notice->setMargin(fontMetrics().height() / 3);
    notice->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return notice;
}

void SimulatorWindow::makeMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("Save &Log..."), QKeySequence::Save, this, &SimulatorWindow::askAndSaveLog);
    file->addAction(tr("Save &Picture..."), this, &SimulatorWindow::askAndSavePicture);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    QMenu* device = menuBar()->addMenu(tr("&Device"));
    device->addAction(tr("&Read Files Again"), QKeySequence::Refresh, &device_, &SimulatedDevice::loadFiles);
    device->addAction(tr("Switch Everything &Off"), &device_, &SimulatedDevice::switchEverythingOff);
    device->addAction(tr("&Clear Log"), &log_, &LogModel::clear);
    menuBar()->addMenu(new FaultsMenu(device_, this));
}

bool SimulatorWindow::saveLog(const QString& path, QString& error) const {
    QSaveFile file(path);
    const QByteArray text = log_.text();
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() && file.commit())
        return true;
    error = file.errorString();
    return false;
}

void SimulatorWindow::askAndSaveLog() {
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Log"), "lx400d.log", tr("Logs (*.log);;All Files (*)"));
    QString error;
    if (!path.isEmpty() && !saveLog(path, error))
        QMessageBox::warning(this, windowTitle(), tr("The log could not be saved: %1").arg(error));
}

void SimulatorWindow::askAndSavePicture() {
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Picture"), "lx400d.png", tr("Pictures (*.png)"));
    if (path.isEmpty())
        return;
    Snapshot snapshot(device_, path, std::nullopt);
    connect(&snapshot, &Snapshot::failed, this, [this](const QString& reason) {
        QMessageBox::warning(this, windowTitle(), tr("The picture could not be saved: %1").arg(reason));
    });
    snapshot.write();
}

} // namespace orvista

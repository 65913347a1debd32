#include "tools/tour/Stage.h"

#include "tests/support/ModalDriver.h"

#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QTest>
#include <QTextStream>

namespace orvista::tour {

namespace {

void makeFolder(const QDir& parent, const QString& name) {
    if (!parent.mkpath(name))
        throw std::runtime_error("cannot make " + parent.filePath(name).toStdString());
}

/// The window under a strip with its title, since there is no window manager to draw one.
QImage withTitle(QWidget& window) {
    const QPixmap content = window.grab();
    const qreal scale = content.devicePixelRatio();
    const int strip = window.fontMetrics().height() * 3 / 2;
    QPixmap picture(content.width(), content.height() + qRound(strip * scale));
    picture.setDevicePixelRatio(scale);
    picture.fill(window.palette().color(QPalette::Dark));
    QPainter painter(&picture);
    painter.setFont(window.font());
    painter.setPen(window.palette().color(QPalette::BrightText));
    painter.drawText(QRect(0, 0, window.width(), strip), Qt::AlignCenter, window.windowTitle());
    painter.drawPixmap(0, strip, content);
    return picture.toImage();
}

} // namespace

Stage::Stage(const QString& folder) : folder_(QDir(folder).absolutePath()) {
    makeFolder(folder_, QStringLiteral("."));
    for (const QString& picture : folder_.entryList({QStringLiteral("[0-9][0-9]-*.png")}, QDir::Files))
        folder_.remove(picture);
    for (const auto* const name : {"program", "projects", "files"}) {
        QDir(path(QLatin1String(name))).removeRecursively();
        makeFolder(folder_, QLatin1String(name));
    }
}

void Stage::startEditor(const QString& project, quint16 modbusPort, const QString& recoveryFolder) {
    editor_.reset();
    editor_ = std::make_unique<EditorProgram>(path(QStringLiteral("program")).toStdString(), modbusPort,
                                              recoveryFolder);
    if (!project.isEmpty())
        editor_->window().openAtStart(project.toStdString());
    editor_->window().show();
    if (!QTest::qWaitForWindowExposed(&editor_->window()))
        throw std::runtime_error("the main window does not show");
}

void Stage::show(QWidget& window, const QString& name, const QString& line) {
    QCoreApplication::processEvents(); // lays the window out
    show(withTitle(window), name, line);
}

void Stage::show(const QImage& picture, const QString& name, const QString& line) {
    const QString file = QStringLiteral("%1-%2.png").arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name);
    if (!picture.save(path(file)))
        throw std::runtime_error("cannot save " + file.toStdString());
    QTextStream(stdout) << file.left(2) << "  " << line << "\n";
}

void Stage::inDialog(const QString& name, std::function<void(const Hands&)> act) {
    testing::onModal(name, [act = std::move(act)](QWidget* dialog) {
        // Nothing may be thrown through the dialog's event loop.
        try {
            const QPointer<QWidget> played = dialog;
            // Its boxes have the focus only then, on which the file dialogs rely.
            if (!QTest::qWaitForWindowActive(dialog))
                throw std::logic_error("the dialog takes no keys");
            act(Hands(*dialog));
            if (played && played->isVisible())
                throw std::logic_error("the dialog does not close");
        } catch (const std::exception& failure) {
            QTest::qFail(failure.what(), __FILE__, __LINE__);
        }
    });
}

void Stage::setUpTryOut() const {
    const QDir ours(QString::fromStdString(programFolder()));
    makeFolder(folder_, QStringLiteral("program/examples/pumpstation"));
    const QDir example(ours.filePath(QStringLiteral("examples/pumpstation")));
    for (const QString& name : example.entryList(QDir::Files))
        if (!QFile::copy(example.filePath(name), path("program/examples/pumpstation/" + name)))
            throw std::runtime_error("cannot copy " + name.toStdString());
    QFile simulator(path(QStringLiteral("program/lx400d-simulator")));
    if (!simulator.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write " + simulator.fileName().toStdString());
    simulator.write("#!/bin/sh\nexec '" + QFile::encodeName(ours.filePath("lx400d-simulator")) +
                    "' --headless --modbus-port 0 --transfer-port 0 \"$@\"\n");
    simulator.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

void Stage::answerWithFile(const QString& path) {
    inDialog(QStringLiteral("comdlg"), [path](const Hands& dialog) {
        dialog.find<QLineEdit>(QStringLiteral("fileNameEdit")).setText(path);
        dialog.acceptFile();
    });
}

QString Stage::projectFolder(const QString& name) const {
    makeFolder(QDir(path(QStringLiteral("projects"))), name);
    return path(QStringLiteral("projects/") + name);
}

void Stage::keep(const QString& folder, const QString& name) const {
    makeFolder(QDir(path(QStringLiteral("files"))), name);
    const QDir from(folder);
    const QDir to(path(QStringLiteral("files/") + name));
    for (const QString& file : from.entryList(QDir::Files))
        if (!QFile::copy(from.filePath(file), to.filePath(file)))
            throw std::runtime_error("cannot copy " + file.toStdString());
}

} // namespace orvista::tour

#include "link/forms/DisplayReading.h"

#include "link/ModbusAnswers.h"
#include "link/TcpConnection.h"
#include "link/forms/ResetWatch.h"

#include <QNetworkProxy>
#include <QTcpSocket>

#include <utility>

namespace orvista {

DisplayReading::DisplayReading(QObject* parent) : QObject(parent) {
    timeout_.setSingleShot(true);
    connect(&timeout_, &QTimer::timeout, this, &DisplayReading::timedOut);
}

DisplayReading::~DisplayReading() {
    abort();
}

void DisplayReading::begin(const std::string& host, std::uint16_t port, std::vector<DisplayItem> items) {
    abort();
    items_ = std::move(items);
    steps_ = readSteps(items_);
    step_ = 0;
    isConnected_ = false;
    socket_ = new QTcpSocket(this);
    socket_->setProxy(QNetworkProxy::NoProxy);
    connect(socket_, &QTcpSocket::connected, this, [this] {
        isConnected_ = true;
        ask();
    });
    connect(socket_, &QTcpSocket::readyRead, this, &DisplayReading::receive);
    connect(socket_, &QTcpSocket::errorOccurred, this, &DisplayReading::errorOccurred);
    const auto* const watch = new ResetWatch(*socket_);
    connect(watch, &ResetWatch::wasReset, this, [this] { fail(tr("the display reset the connection")); });
    timeout_.start(answerTimeout);
    socket_->connectToHost(QString::fromStdString(host), port);
}

void DisplayReading::abort() {
    timeout_.stop();
    if (!socket_)
        return;
    // Called from the socket's own signals, so it may not be deleted here.
    socket_->disconnect(this);
    socket_->findChild<ResetWatch*>()->disconnect(this);
    socket_->abort();
    socket_->deleteLater();
    socket_ = nullptr;
}

void DisplayReading::ask() {
    if (step_ == steps_.size()) {
        abort();
        emit done(items_);
        return;
    }
    received_.clear();
    const Frame& request = steps_[step_].request;
    timeout_.start(answerTimeout);
    socket_->write(reinterpret_cast<const char*>(request.data()), static_cast<qint64>(request.size()));
}

void DisplayReading::receive() {
    const QByteArray bytes = socket_->readAll();
    if (step_ == steps_.size())
        return;
    received_.insert(received_.end(), bytes.begin(), bytes.end());
    const ReadStep& step = steps_[step_];
    try {
        const auto data = answerData(step.request, received_);
        if (!data)
            return;
        takeAnswer(step, *data, items_);
    } catch (const BadAnswer& bad) {
        fail(QString::fromUtf8(bad.what()));
        return;
    }
    ++step_;
    ask();
}

void DisplayReading::errorOccurred(QAbstractSocket::SocketError error) {
    if (isConnected_ && error == QAbstractSocket::RemoteHostClosedError)
        fail(QString::fromUtf8(answerCutOff(steps_[step_].request, received_.size()).what()));
    else
        fail(socket_->errorString());
}

void DisplayReading::timedOut() {
    if (isConnected_)
        fail(QString::fromUtf8(answerTimedOut(steps_[step_].request, received_.size()).what()));
    else
        fail(QString::fromStdString(noConnectionText(answerTimeout)));
}

void DisplayReading::fail(const QString& reason) {
    abort();
    emit failed(reason);
}

} // namespace orvista

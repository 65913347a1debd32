#include "link/forms/ModbusExchange.h"

#include "link/ModbusAnswers.h"
#include "link/TcpConnection.h"
#include "link/forms/ResetWatch.h"

#include <QNetworkProxy>
#include <QTcpSocket>

namespace orvista {

ModbusExchange::ModbusExchange(QObject* parent) : QObject(parent) {
    timeout_.setSingleShot(true);
    connect(&timeout_, &QTimer::timeout, this, &ModbusExchange::timedOut);
}

ModbusExchange::~ModbusExchange() {
    close();
}

void ModbusExchange::setDisplay(const std::string& host, std::uint16_t port) {
    close();
    host_ = host;
    port_ = port;
}

void ModbusExchange::ask(const Frame& request) {
    request_ = request;
    received_.clear();
    isAsking_ = true;
    timeout_.start(answerTimeout);
    if (isConnected_)
        send();
    else
        connectToDisplay();
}

void ModbusExchange::connectToDisplay() {
    socket_ = new QTcpSocket(this);
    socket_->setProxy(QNetworkProxy::NoProxy);
    connect(socket_, &QTcpSocket::connected, this, [this] {
        isConnected_ = true;
        timeout_.start(answerTimeout);
        send();
    });
    connect(socket_, &QTcpSocket::readyRead, this, &ModbusExchange::receive);
    connect(socket_, &QTcpSocket::errorOccurred, this, &ModbusExchange::errorOccurred);
    const auto* const watch = new ResetWatch(*socket_);
    connect(watch, &ResetWatch::wasReset, this,
            [this] { fail(Failure::Lost, tr("the display reset the connection")); });
    socket_->connectToHost(QString::fromStdString(host_), port_);
}

void ModbusExchange::close() {
    timeout_.stop();
    isAsking_ = false;
    isConnected_ = false;
    if (!socket_)
        return;
    // Called from the socket's own signals, so it may not be deleted here.
    socket_->disconnect(this);
    socket_->findChild<ResetWatch*>()->disconnect(this);
    socket_->abort();
    socket_->deleteLater();
    socket_ = nullptr;
}

void ModbusExchange::send() {
    socket_->write(reinterpret_cast<const char*>(request_.data()), static_cast<qint64>(request_.size()));
}

void ModbusExchange::receive() {
    const QByteArray bytes = socket_->readAll();
    if (!isAsking_)
        return;
    received_.insert(received_.end(), bytes.begin(), bytes.end());
    try {
        const auto data = answerData(request_, received_);
        if (!data)
            return;
        timeout_.stop();
        isAsking_ = false;
        emit answered({data->begin(), data->end()});
    } catch (const ExceptionAnswer& exception) {
        fail(exception.isRefusal() ? Failure::Refused : Failure::Unclear,
             QString::fromUtf8(exception.what()));
    } catch (const BadAnswer& bad) {
        fail(Failure::Lost, QString::fromUtf8(bad.what()));
    }
}

void ModbusExchange::errorOccurred(QAbstractSocket::SocketError error) {
    if (!isAsking_)
        close(); // the next request connects again
    else if (isConnected_ && error == QAbstractSocket::RemoteHostClosedError)
        fail(Failure::Lost, QString::fromUtf8(answerCutOff(request_, received_.size()).what()));
    else
        fail(Failure::Lost, socket_->errorString());
}

void ModbusExchange::timedOut() {
    if (isConnected_)
        fail(Failure::Lost, QString::fromUtf8(answerTimedOut(request_, received_.size()).what()));
    else
        fail(Failure::Lost, QString::fromStdString(noConnectionText(answerTimeout)));
}

void ModbusExchange::fail(Failure failure, const QString& reason) {
    timeout_.stop();
    isAsking_ = false;
    if (failure == Failure::Lost)
        close();
    emit failed(failure, reason);
}

} // namespace orvista

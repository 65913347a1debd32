#include "link/forms/DisplayAcceptance.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

AcceptanceRun::Failure runFailure(ModbusExchange::Failure failure) {
    switch (failure) {
    case ModbusExchange::Failure::Refused:
        return AcceptanceRun::Failure::Refused;
    case ModbusExchange::Failure::Unclear:
        return AcceptanceRun::Failure::Unclear;
    case ModbusExchange::Failure::Lost:
        break;
    }
    return AcceptanceRun::Failure::Lost;
}

} // namespace

DisplayAcceptance::DisplayAcceptance(const std::string& host, std::uint16_t port, AcceptanceRun run,
                                     QObject* parent)
    : QObject(parent), run_(std::move(run)), exchange_(new ModbusExchange(this)) {
    exchange_->setDisplay(host, port);
    clock_.start();
    wake_.setSingleShot(true);
    wake_.setTimerType(Qt::PreciseTimer);
    connect(&wake_, &QTimer::timeout, this, &DisplayAcceptance::goOn);
    connect(exchange_, &ModbusExchange::answered, this, &DisplayAcceptance::take);
    connect(exchange_, &ModbusExchange::failed, this, &DisplayAcceptance::noteFailure);
}

void DisplayAcceptance::start() {
    goOn();
}

void DisplayAcceptance::show(Item message) {
    run_.show(message);
    goOn();
}

void DisplayAcceptance::write(std::map<Item, HeldWords> values) {
    run_.write(std::move(values));
    goOn();
}

void DisplayAcceptance::end() {
    run_.end(now());
    goOn();
}

void DisplayAcceptance::take(const std::vector<std::uint8_t>& data) {
    run_.answered(data, now());
    goOn();
}

void DisplayAcceptance::noteFailure(ModbusExchange::Failure failure, const QString& reason) {
    run_.failed(runFailure(failure), reason.toStdString(), now());
    goOn();
}

void DisplayAcceptance::goOn() {
    const auto frame = run_.next(now());
    if (frame)
        exchange_->ask(*frame);
    else if (run_.isOver() || !exchange_->isAsking())
        exchange_->close();
    const auto wake = run_.wakeAt();
    if (wake)
        wake_.start(std::max(*wake - now(), AcceptanceRun::Time(0)));
    else
        wake_.stop();
    emit changed();
    if (run_.isOver() && !std::exchange(hasToldEnd_, true))
        emit over();
}

} // namespace orvista

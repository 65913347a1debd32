#include "link/forms/DisplayReading.h"

#include "link/ModbusAnswers.h"
#include "link/forms/ModbusExchange.h"

#include <utility>

namespace orvista {

DisplayReading::DisplayReading(QObject* parent) : QObject(parent), exchange_(new ModbusExchange(this)) {
    connect(exchange_, &ModbusExchange::answered, this, &DisplayReading::take);
    connect(exchange_, &ModbusExchange::failed, this,
            [this](ModbusExchange::Failure /*failure*/, const QString& reason) {
                abort();
                emit failed(reason);
            });
}

void DisplayReading::begin(const std::string& host, std::uint16_t port, std::vector<DisplayItem> items) {
    exchange_->setDisplay(host, port);
    items_ = std::move(items);
    steps_ = readSteps(items_);
    step_ = 0;
    isUnderWay_ = true;
    ask();
}

void DisplayReading::abort() {
    isUnderWay_ = false;
    exchange_->close();
}

void DisplayReading::ask() {
    if (step_ < steps_.size())
        return exchange_->ask(steps_[step_].request);
    abort();
    emit done(items_);
}

void DisplayReading::take(const std::vector<std::uint8_t>& data) {
    takeAnswer(steps_[step_], data, items_);
    ++step_;
    ask();
}

} // namespace orvista

#include "link/AcceptanceRun.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvista {

namespace {

bool isEmergency(const DisplayItem& item) {
    return item.item.kind == Kind::Emergency;
}

constexpr HeldWords coilOff{0, 0};
constexpr HeldWords coilOn{1, 0};

constexpr std::ptrdiff_t floatsWrittenAtOnce = mostRegistersWritten / 2;

} // namespace

AcceptanceRun::AcceptanceRun(std::vector<DisplayItem> items, Keep keep)
    : items_(std::move(items)), before_(items_), keep_(std::move(keep)) {}

AcceptanceRun::AcceptanceRun(std::vector<DisplayItem> items, const std::vector<WrittenItem>& written)
    : items_(std::move(items)), before_(items_), ledger_(written), isResumed_(true) {
    // So that whatever is there otherwise is somebody else's.
    for (const WrittenItem& item : written)
        items_.at(item.place).raw = item.wrote;
}

AcceptanceRun::State AcceptanceRun::state() const {
    if (isOver())
        return State::Over;
    if (isEnding())
        return State::PuttingBack;
    if (phase_ == Phase::Begin || phase_ == Phase::First)
        return State::Reading;
    return wish_ || phase_ == Phase::BeforeStep || phase_ == Phase::Step ? State::Working : State::Waiting;
}

void AcceptanceRun::show(Item message) {
    if (!isEnding())
        wish_ = {message, {}};
}

void AcceptanceRun::write(std::map<Item, HeldWords> values) {
    if (!isEnding())
        wish_ = {std::nullopt, std::move(values)};
}

void AcceptanceRun::end(Time now) {
    if (isEnding() || isOver())
        return;
    deadline_ = now + putBackWithin;
    wish_.reset();
    // What is under way is waited for; what was not begun is not.
    queue_.resize(isUnderWay_ ? 1 : 0);
    ledger_.forgetPlanned();
}

void AcceptanceRun::stop(std::string reason, Time now) {
    if (!isEnding())
        reason_ = std::move(reason);
    // What was cut off is put back when somebody wants that, not because something fails.
    if (isResumed_ && !isEnding())
        finish();
    else
        end(now);
}

void AcceptanceRun::finish() {
    phase_ = Phase::Over;
    queue_.clear();
    isUnderWay_ = false;
}

std::optional<Frame> AcceptanceRun::next(Time now) {
    if (isEnding() && now >= *deadline_)
        finish();
    while (!isOver() && !isUnderWay_ && queue_.empty()) {
        const Phase before = phase_;
        goOn(now);
        if (phase_ == before && queue_.empty())
            return std::nullopt;
    }
    if (isOver() || isUnderWay_)
        return std::nullopt;
    isUnderWay_ = true;
    for (const Write& write : queue_.front().writes)
        ledger_.noteSent(write.place, write.value);
    return queue_.front().frame;
}

std::optional<AcceptanceRun::Time> AcceptanceRun::wakeAt() const {
    if (isOver())
        return std::nullopt;
    if (isEnding())
        return phase_ == Phase::Pause ? std::min(pauseEnd_, *deadline_) : *deadline_;
    return isUnderWay_ ? std::nullopt : std::optional(lastLook_ + readEvery);
}

/// Everything that a phase asked for was answered.
void AcceptanceRun::goOn(Time now) {
    if (isEnding() && phase_ < Phase::BeforePutBack)
        phase_ = Phase::Idle;
    keepIfChanged();
    switch (phase_) {
    case Phase::Begin:
        return beginReading();
    case Phase::First:
        return takeFirstReading(now);
    case Phase::Idle:
        return goOnWhenIdle(now);
    case Phase::BeforeStep:
        return beginStep(now);
    case Phase::Look:
    case Phase::Step:
        phase_ = Phase::Idle;
        return;
    case Phase::BeforePutBack:
        return beginPutBack();
    case Phase::PutBack:
        return pauseOrEnd(now);
    case Phase::Pause:
        if (now >= pauseEnd_)
            beginLastReading();
        return;
    case Phase::Over:
        return;
    }
}

void AcceptanceRun::beginReading() {
    reason_ = acceptanceFault(items_);
    if (!reason_.empty())
        return finish();
    phase_ = Phase::First;
    queueReading(true);
}

void AcceptanceRun::takeFirstReading(Time now) {
    phase_ = Phase::Idle;
    lastLook_ = now;
    if (isResumed_)
        return;
    before_ = items_;
    const auto on = std::ranges::find_if(
        items_, [](const DisplayItem& item) { return isEmergency(item) && item.isOn(); });
    if (on == items_.end())
        return;
    reason_ = on->name() + " is on: nothing is switched while an emergency message is on";
    finish();
}

void AcceptanceRun::goOnWhenIdle(Time now) {
    if (isEnding())
        return ledger_.isEmpty() ? finish() : beginLastReading();
    if (!wish_ && now < lastLook_ + readEvery)
        return;
    lastLook_ = now;
    phase_ = wish_ ? Phase::BeforeStep : Phase::Look;
    queueReading(wish_.has_value());
}

void AcceptanceRun::beginLastReading() {
    phase_ = Phase::BeforePutBack;
    queueReading(true);
}

void AcceptanceRun::queueReading(bool withRegisters) {
    for (ReadStep& step : readSteps(items_))
        if (withRegisters || !items_[step.firstItem].isFloat()) {
            Frame frame = step.request;
            queue_.push_back({std::move(frame), std::move(step)});
        }
}

void AcceptanceRun::beginStep(Time now) {
    phase_ = Phase::Step;
    const Wish wish = *std::exchange(wish_, std::nullopt);
    if (wish.message) {
        queueWrites(variablesBack());
        queueWrites(switchesTo(*wish.message));
    } else {
        queueWrites(wanted(wish.values));
    }
    if (!queue_.empty() && !isKept())
        return stop("what is there now cannot be kept, so that nothing is switched", now);
    if (wish.message)
        shown_ = wish.message;
}

/// Plans what is queued, and has it kept.
bool AcceptanceRun::isKept() {
    for (const Request& request : queue_)
        for (const Write& write : request.writes) {
            ledger_.plan(write.place, items_[write.place].raw, write.value);
            theirs_.erase(write.place);
        }
    kept_ = ledger_.entries();
    return keep_(*this);
}

/// What was put back, or is somebody else's by now, is not to be offered should this program be killed. Where
/// it cannot be kept, what was kept before says more than is true.
void AcceptanceRun::keepIfChanged() {
    if (isResumed_ || kept_ == ledger_.entries())
        return;
    kept_ = ledger_.entries();
    keep_(*this);
}

std::vector<AcceptanceRun::Write> AcceptanceRun::switchesTo(Item message) const {
    std::vector<Write> writes;
    std::optional<Write> last;
    for (std::size_t place = 0; place < items_.size(); ++place) {
        const DisplayItem& item = items_[place];
        if (!item.isMessage() || !item.isAddressable)
            continue;
        if (item.item == message && !item.isOn())
            last = {place, coilOn};
        if (item.item != message && item.isOn() && mayBeSwitchedOff(place))
            writes.push_back({place, coilOff});
    }
    if (last)
        writes.push_back(*last);
    return writes;
}

bool AcceptanceRun::mayBeSwitchedOff(std::size_t place) const {
    if (isEmergency(items_[place]))
        return ledger_.isConfirmed(place);
    return !theirs_.contains(place) || ledger_.isWritten(place);
}

std::vector<AcceptanceRun::Write> AcceptanceRun::wanted(const std::map<Item, HeldWords>& values) const {
    std::vector<Write> writes;
    for (std::size_t place = 0; place < items_.size(); ++place) {
        const auto value = values.find(items_[place].item);
        if (value != values.end() && items_[place].isAddressable && items_[place].raw != value->second)
            writes.push_back({place, value->second});
    }
    return writes;
}

std::vector<AcceptanceRun::Write> AcceptanceRun::variablesBack() const {
    std::vector<Write> writes;
    for (const WrittenItem& written : ledger_.entries())
        if (!items_[written.place].isMessage() && items_[written.place].raw != written.before &&
            !ledger_.isDoubtful(written.place))
            writes.push_back({written.place, written.before});
    return writes;
}

/// Those to be switched off, then those to be switched on.
std::vector<AcceptanceRun::Write> AcceptanceRun::messagesBack() const {
    std::vector<Write> writes;
    for (const WrittenItem& written : ledger_.entries()) {
        const DisplayItem& item = items_[written.place];
        if (item.isMessage() && item.raw != written.before && !ledger_.isDoubtful(written.place) &&
            (!isEmergency(item) || ledger_.isConfirmed(written.place)))
            writes.push_back({written.place, written.before});
    }
    std::stable_partition(writes.begin(), writes.end(),
                          [](const Write& write) { return write.value == coilOff; });
    return writes;
}

void AcceptanceRun::queueWrites(const std::vector<Write>& writes) {
    std::vector<Write> floats;
    for (const Write& write : writes) {
        const DisplayItem& item = items_[write.place];
        if (item.isFloat())
            floats.push_back(write);
        else
            queue_.push_back({coilRequest(static_cast<std::uint16_t>(item.address), write.value == coilOn),
                              std::nullopt,
                              {write}});
    }
    for (auto first = floats.begin(); first != floats.end();) {
        auto end = std::next(first);
        while (end != floats.end() && end->place == std::prev(end)->place + 1 &&
               end - first < floatsWrittenAtOnce)
            ++end;
        queueFloats({first, end});
        first = end;
    }
}

/// \param writes of floats whose addresses follow one another
void AcceptanceRun::queueFloats(std::vector<Write> writes) {
    std::vector<std::uint16_t> words;
    for (const Write& write : writes)
        words.insert(words.end(), write.value.begin(), write.value.end());
    const auto address = static_cast<std::uint16_t>(items_[writes.front().place].address);
    queue_.push_back({registersRequest(address, words), std::nullopt, std::move(writes)});
}

void AcceptanceRun::beginPutBack() {
    phase_ = Phase::PutBack;
    hasFailed_ = false;
    std::vector<Write> writes = messagesBack();
    std::ranges::copy(variablesBack(), std::back_inserter(writes));
    // What breaks the connection is not to keep the rest from being put back.
    const auto failed = std::stable_partition(
        writes.begin(), writes.end(), [this](const Write& write) { return !failed_.contains(write.place); });
    queueWrites({writes.begin(), failed});
    queueWrites({failed, writes.end()});
}

void AcceptanceRun::pauseOrEnd(Time now) {
    if (!hasFailed_ && now >= lateEnd_) {
        forgetWhatDidNotCome();
        return finish();
    }
    phase_ = Phase::Pause;
    pauseEnd_ = now + pauseBetweenTries;
}

void AcceptanceRun::forgetWhatDidNotCome() {
    for (const WrittenItem& written : ledger_.entries())
        if (items_[written.place].raw == written.before)
            ledger_.noteSettled(written.place, written.before);
}

AcceptanceRun::Request AcceptanceRun::takeRequest() {
    Request request = std::move(queue_.front());
    queue_.pop_front();
    isUnderWay_ = false;
    return request;
}

void AcceptanceRun::answered(std::span<const std::uint8_t> data, Time now) {
    if (!isUnderWay_)
        return;
    const Request request = takeRequest();
    if (request.read)
        takeReading(*request.read, data, now);
    for (const Write& write : request.writes) {
        ledger_.noteSettled(write.place, write.value);
        items_[write.place].raw = write.value;
    }
}

void AcceptanceRun::takeReading(const ReadStep& step, std::span<const std::uint8_t> data, Time now) {
    std::vector<DisplayItem> read = items_;
    takeAnswer(step, data, read);
    for (std::size_t place = step.firstItem; place < step.firstItem + step.itemCount; ++place)
        noteRead(place, read[place].raw);
    if (phase_ != Phase::First && !isResumed_)
        endAtForeignEmergency(step, now);
}

void AcceptanceRun::noteRead(std::size_t place, HeldWords read) {
    DisplayItem& item = items_[place];
    const bool wasOurs = ledger_.isWritten(place);
    const bool isFirst = phase_ == Phase::First;
    const auto origin = ledger_.noteRead(place, std::exchange(item.raw, read), read);
    if (origin != AcceptanceLedger::Origin::Others || (isFirst && (!wasOurs || read == before_[place].raw)))
        return;
    if (wasOurs || !item.isFloat())
        changed_.insert(item.item);
    if (item.isMessage())
        theirs_.insert(place);
}

void AcceptanceRun::endAtForeignEmergency(const ReadStep& step, Time now) {
    for (std::size_t place = step.firstItem; place < step.firstItem + step.itemCount; ++place)
        if (isEmergency(items_[place]) && items_[place].isOn() && !ledger_.isWritten(place))
            stop(items_[place].name() + " came on, which was not switched here", now);
}

void AcceptanceRun::failed(Failure failure, const std::string& reason, Time now) {
    if (!isUnderWay_)
        return;
    for (const Write& write : takeRequest().writes) {
        failed_.insert(write.place);
        if (failure == Failure::Refused)
            ledger_.noteSettled(write.place, items_[write.place].raw);
        else if (!isEnding())
            lateEnd_ = now + lateWithin;
    }
    if (!isEnding())
        return stop(reason, now);
    hasFailed_ = true;
    if (phase_ < Phase::BeforePutBack || (phase_ == Phase::PutBack && failure != Failure::Lost))
        return; // the others are tried all the same
    queue_.clear();
    phase_ = Phase::Pause;
    pauseEnd_ = now + pauseBetweenTries;
}

std::string acceptanceFault(const std::vector<DisplayItem>& items) {
    std::map<std::int64_t, const DisplayItem*> coils;
    for (const DisplayItem& item : items) {
        if (item.isFloat() || !item.isAddressable)
            continue;
        const auto [first, isNew] = coils.try_emplace(item.address, &item);
        if (!isNew)
            return "the address map gives " + first->second->name() + " and " + item.name() +
                   " the same coil";
    }
    return {};
}

} // namespace orvista

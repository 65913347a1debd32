#pragma once

#include "link/AcceptanceLedger.h"
#include "link/ModbusReader.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace orvista {

/// Lets a display that runs in a plant show one message after the other, and puts back what it wrote. It has
/// neither a connection nor a clock: it is told what happened and when, and gives the request that is to be
/// sent next. Somebody else may write to the same display: what others write stays as it is.
///
/// An emergency message comes first: while one is on that this run did not switch on, nothing is switched.
/// None is ever switched off but those of which the display confirmed that this run switched them on, and
/// those that a person asks for of what an earlier run has left.
class AcceptanceRun {
public:
    /// Of a clock that never runs backwards.
    using Time = std::chrono::milliseconds;
    static constexpr Time readEvery{1'000};
    /// From the end of the run on; what is not as it was before by then stays as it is.
    static constexpr Time putBackWithin{10'000};
    static constexpr Time pauseBetweenTries{500};
    /// A display may carry out so late what it was sent, and did not confirm. Until then it is read again.
    static constexpr Time lateWithin{3'000};

    enum class State {
        Reading,     ///< what is there before
        Waiting,     ///< for what is wanted next; all coils are read once a second
        Working,     ///< on what is wanted
        PuttingBack, ///< after the end
        Over
    };
    /// Keeps what was there before and what may have been written, so that it can be put back should this
    /// program be killed. False where that cannot be.
    using Keep = std::function<bool(const AcceptanceRun&)>;

    /// \param items of displayItems()
    /// \param keep is called before the first request of each step that writes, and when written() is another
    AcceptanceRun(std::vector<DisplayItem> items, Keep keep);
    /// One that was cut off: it reads what is there now, then waits for end().
    /// \param items as they were before
    AcceptanceRun(std::vector<DisplayItem> items, const std::vector<WrittenItem>& written);

    /// Switches exactly this message on, as soon as it can; what was wanted before and is not begun is
    /// forgotten. Variables are put back first. Messages that others switched on meanwhile stay on.
    void show(Item message);
    /// Gives the variables of the message that is on these values: a float's two words by address, a coil's 0
    /// or 1.
    void write(std::map<Item, HeldWords> values);
    /// Puts everything back, then is over.
    void end(Time now);

    /// The request that is to be sent now; nothing while one is under way, and while there is none.
    std::optional<Frame> next(Time now);
    /// When to call next() again, should nothing happen until then; nothing where time alone changes nothing.
    std::optional<Time> wakeAt() const;

    /// \param data as answerData() gives it
    void answered(std::span<const std::uint8_t> data, Time now);
    /// What became of a request that was not answered as it should be.
    enum class Failure {
        Refused, ///< it was not carried out
        Unclear, ///< it may be
        Lost     ///< the same, and the connection is of no more use
    };
    void failed(Failure failure, const std::string& reason, Time now);

    State state() const;
    bool isOver() const { return phase_ == Phase::Over; }
    /// Why it ended, or did not begin, though nobody wanted it to; empty otherwise.
    const std::string& reason() const { return reason_; }
    /// The message that was switched on last.
    const std::optional<Item>& shown() const { return shown_; }
    /// What the display holds, as far as is known.
    const std::vector<DisplayItem>& items() const { return items_; }
    /// What it held when the run began.
    const std::vector<DisplayItem>& before() const { return before_; }
    /// What was written and not put back, or is about to be written; places are those of items().
    std::vector<WrittenItem> written() const { return ledger_.entries(); }
    /// Coils that changed by themselves, and variables that others wrote over what this run had written.
    const std::set<Item>& changedByOthers() const { return changed_; }

private:
    enum class Phase { Begin, First, Idle, Look, BeforeStep, Step, BeforePutBack, PutBack, Pause, Over };
    struct Write {
        std::size_t place;
        HeldWords value;
    };
    struct Request {
        Frame frame;
        std::optional<ReadStep> read = {};
        std::vector<Write> writes = {}; ///< what a confirmed one has written
    };
    struct Wish {
        std::optional<Item> message; ///< none: values are to be written
        std::map<Item, HeldWords> values;
    };

    bool isEnding() const { return deadline_.has_value(); }
    void goOn(Time now);
    void beginReading();
    void goOnWhenIdle(Time now);
    void takeFirstReading(Time now);
    void beginStep(Time now);
    void beginLastReading();
    void beginPutBack();
    void pauseOrEnd(Time now);
    void stop(std::string reason, Time now);
    void finish();

    void queueReading(bool withRegisters);
    void takeReading(const ReadStep& step, std::span<const std::uint8_t> data, Time now);
    void noteRead(std::size_t place, HeldWords read);
    void endAtForeignEmergency(const ReadStep& step, Time now);

    Request takeRequest();
    std::vector<Write> switchesTo(Item message) const;
    std::vector<Write> wanted(const std::map<Item, HeldWords>& values) const;
    std::vector<Write> variablesBack() const;
    std::vector<Write> messagesBack() const;
    bool mayBeSwitchedOff(std::size_t place) const;
    void forgetWhatDidNotCome();
    void queueWrites(const std::vector<Write>& writes);
    void queueFloats(std::vector<Write> writes);
    bool isKept();
    void keepIfChanged();

    std::vector<DisplayItem> items_;
    std::vector<DisplayItem> before_;
    AcceptanceLedger ledger_;
    Keep keep_;
    std::vector<WrittenItem> kept_;
    bool isResumed_ = false;
    Phase phase_ = Phase::Begin;
    std::deque<Request> queue_;
    bool isUnderWay_ = false;      ///< the first of the queue
    bool hasFailed_ = false;       ///< something that was to be put back, in this round
    std::set<std::size_t> failed_; ///< what has failed to be put back: the last to be tried again
    std::optional<Wish> wish_;
    std::optional<Item> shown_;
    Time lastLook_{0};
    Time pauseEnd_{0};
    Time lateEnd_{0};
    std::optional<Time> deadline_; ///< of putting back
    std::string reason_;
    std::set<Item> changed_;
    std::set<std::size_t> theirs_; ///< messages that others have switched since this run did
};

/// Why a display cannot be accepted with these items: two of them share a coil; empty where it can.
std::string acceptanceFault(const std::vector<DisplayItem>& items);

} // namespace orvista

#include "link/AcceptanceRun.h"
#include "link/ModbusAnswers.h"
#include "simulator/DeviceMemory.h"
#include "simulator/ModbusRequests.h"
#include "simulator/ModbusResponder.h"

#include <gmock/gmock.h>

#include <functional>
#include <random>
#include <set>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

using Time = AcceptanceRun::Time;
using State = AcceptanceRun::State;
using Failure = AcceptanceRun::Failure;

constexpr Item regular(std::size_t number) {
    return {Kind::Regular, number - 1};
}
constexpr Item emergency(std::size_t number) {
    return {Kind::Emergency, number - 1};
}
constexpr Item floatVariable(std::size_t number) {
    return {Kind::Float, number - 1};
}
constexpr Item boolean(std::size_t number) {
    return {Kind::Boolean, number - 1};
}

/// What becomes of a request.
enum class Fate { Answered, Refused, Acknowledged, LostBefore, LostAfter };

std::string_view asText(const Frame& frame) {
    return {reinterpret_cast<const char*>(frame.data()), frame.size()};
}

/// A display, a clock and a run on them; the coils lie apart from each other, as they should.
struct World {
    explicit World(const Project& map = mapped()) : project(map) {}

    static Project mapped() {
        Project project;
        project.DigitalInput = 500;
        project.AnalogInput = 1000;
        return project;
    }
    std::uint16_t address(Item item) const { return static_cast<std::uint16_t>(addressOf(project, item)); }
    bool isOn(Item item) const { return display.coil(address(item)); }
    void set(Item item, bool on) { display.setCoil(address(item), on); }
    float value(Item item) const { return display.floatAt(address(item)); }
    void set(Item item, float value) { display.setFloat(address(item), value); }
    std::string on() const {
        std::string names;
        for (const DisplayItem& item : displayItems(project))
            if (!item.isFloat() && isOn(item.item))
                names += (names.empty() ? "" : " ") + item.name();
        return names;
    }

    /// Sends what the run wants to send; false where that is nothing.
    bool step(Fate fate = Fate::Answered) {
        return step([fate](const std::string& /*request*/) { return fate; });
    }
    bool step(const std::function<Fate(const std::string& request)>& fateOf) {
        const auto frame = run.next(now);
        if (!frame)
            return false;
        requests.push_back(requestInWords(*frame));
        const Fate fate = fateOf(requests.back());
        const bool isPerformed = fate == Fate::Answered || fate == Fate::LostAfter;
        const std::string answer = isPerformed ? performModbusRequest(asText(*frame), display) : "";
        if (isPerformed && writesModbusMemory(asText(*frame)))
            writes.push_back(describeModbusRequest(asText(*frame)));
        if (fate == Fate::Answered) {
            const std::vector<std::uint8_t> bytes(answer.begin(), answer.end());
            run.answered(*answerData(*frame, bytes), now);
        } else {
            run.failed(fate == Fate::Refused        ? Failure::Refused
                       : fate == Fate::Acknowledged ? Failure::Unclear
                                                    : Failure::Lost,
                       "it is broken", now);
        }
        return true;
    }
    void settle() {
        while (step())
            ;
    }
    void show(Item message) {
        run.show(message);
        settle();
    }
    void wait(Time time) {
        now += time;
        settle();
    }
    void end() {
        run.end(now);
        settle();
    }
    std::vector<std::string> takeWrites() { return std::exchange(writes, {}); }

    Project project;
    DeviceMemory display;
    Time now{5'000};
    bool canKeep = true;
    std::vector<std::vector<WrittenItem>> kept; ///< what was kept, each time
    std::vector<std::string> requests;
    std::vector<std::string> writes; ///< that were performed
    AcceptanceRun run{displayItems(project), [this](const AcceptanceRun& asked) {
                          kept.push_back(asked.written());
                          return canKeep;
                      }};
};

std::set<Item> items(std::initializer_list<Item> list) {
    return list;
}

TEST(AcceptanceRun, HasExactlyOneMessageOnAndPutsBackWhatWasThere) {
    World world;
    world.set(regular(5), true);
    world.show(regular(1));
    EXPECT_EQ(world.on(), "STDMSG1");
    world.show(regular(2));
    EXPECT_EQ(world.on(), "STDMSG2");
    EXPECT_EQ(world.run.state(), State::Waiting);
    EXPECT_THAT(world.takeWrites(), ElementsAre("Write Single Coil 324: off", "Write Single Coil 320: on",
                                                "Write Single Coil 320: off", "Write Single Coil 321: on"));
    world.end();
    EXPECT_THAT(world.takeWrites(), ElementsAre("Write Single Coil 321: off", "Write Single Coil 324: on"));
    EXPECT_EQ(world.on(), "STDMSG5");
    EXPECT_TRUE(world.run.isOver());
    EXPECT_EQ(world.run.reason(), "");
    EXPECT_THAT(world.run.written(), IsEmpty());
}

TEST(AcceptanceRun, ReadsAllCoilsBeforeEachStepAndOnceASecond) {
    World world;
    world.settle();
    const std::vector<std::string> coils{"reading coils 320 to 359", "reading coils 300 to 319",
                                         "reading coils 500 to 531"};
    std::vector<std::string> all = coils;
    all.insert(all.end(), {"reading registers 1000 to 1123", "reading registers 1124 to 1127"});
    EXPECT_EQ(std::exchange(world.requests, {}), all);
    EXPECT_EQ(world.run.wakeAt(), world.now + 1000ms);
    world.wait(999ms);
    EXPECT_THAT(world.requests, IsEmpty());
    world.wait(1ms);
    EXPECT_EQ(std::exchange(world.requests, {}), coils);
    world.show(regular(1));
    all.push_back("writing coil 320");
    EXPECT_EQ(world.requests, all);
}

TEST(AcceptanceRun, DoesNotBeginWhileAnEmergencyMessageIsOn) {
    World world;
    world.set(emergency(20), true);
    world.show(regular(1));
    EXPECT_TRUE(world.run.isOver());
    EXPECT_EQ(world.run.reason(), "ALTMSG20 is on: nothing is switched while an emergency message is on");
    EXPECT_THAT(world.writes, IsEmpty());
}

TEST(AcceptanceRun, DoesNotBeginWhereTwoItemsShareACoil) {
    Project project = World::mapped();
    project.DigitalInput = 345;
    World world(project);
    world.show(regular(1));
    EXPECT_TRUE(world.run.isOver());
    EXPECT_EQ(world.run.reason(), "the address map gives STDMSG26 and CoilVar1 the same coil");
    EXPECT_THAT(world.requests, IsEmpty());
}

TEST(AcceptanceRun, EndsAtOnceWhenAnEmergencyMessageComesOn) {
    World world;
    world.show(regular(1));
    world.set(emergency(3), true);
    world.wait(1s);
    EXPECT_TRUE(world.run.isOver());
    EXPECT_EQ(world.run.reason(), "ALTMSG3 came on, which was not switched here");
    EXPECT_EQ(world.on(), "ALTMSG3");
}

TEST(AcceptanceRun, EndsInsteadOfTheNextStepWhenAnEmergencyMessageCameOn) {
    World world;
    world.show(emergency(1));
    EXPECT_EQ(world.on(), "ALTMSG1");
    world.set(emergency(2), true);
    world.show(regular(1));
    EXPECT_TRUE(world.run.isOver());
    EXPECT_EQ(world.on(), "ALTMSG2");
}

TEST(AcceptanceRun, AnEmergencyMessageThatOthersSwitchAgainIsTheirs) {
    World world;
    world.show(emergency(1));
    world.set(emergency(1), false);
    world.wait(1s);
    EXPECT_FALSE(world.run.isOver());
    world.set(emergency(1), true);
    world.wait(1s);
    EXPECT_TRUE(world.run.isOver());
    EXPECT_EQ(world.on(), "ALTMSG1");
    EXPECT_EQ(world.run.changedByOthers(), items({emergency(1)}));
}

TEST(AcceptanceRun, WhatOthersSwitchStaysAndIsNamed) {
    World world;
    world.set(regular(5), true);
    world.show(regular(1));
    world.set(regular(7), true);  // comes on
    world.set(regular(5), true);  // comes back
    world.set(regular(1), false); // what is shown goes off
    world.set(boolean(2), true);
    world.wait(1s);
    world.show(regular(2));
    world.end();
    EXPECT_EQ(world.on(), "STDMSG5 STDMSG7 CoilVar2");
    EXPECT_EQ(world.run.changedByOthers(), items({regular(1), regular(5), regular(7), boolean(2)}));
}

TEST(AcceptanceRun, AMessageThatOthersSwitchedCanStillBeShown) {
    World world;
    world.show(regular(1));
    world.set(regular(2), true);
    world.wait(1s);
    world.set(regular(2), false);
    world.wait(1s);
    world.show(regular(2));
    EXPECT_EQ(world.on(), "STDMSG2");
    world.end();
    EXPECT_EQ(world.on(), "");
}

constexpr HeldWords words(std::uint16_t low, std::uint16_t high) {
    return {low, high};
}

TEST(AcceptanceRun, WritesValuesAndPutsThemBackBeforeTheNextMessage) {
    World world;
    world.set(floatVariable(2), 1.0F);
    world.set(boolean(4), true);
    world.show(regular(1));
    world.takeWrites();
    world.run.write({{floatVariable(1), words(0xE979, 0x42F6)},
                     {floatVariable(2), words(0x0000, 0xC020)},
                     {floatVariable(9), words(0x0000, 0x42C8)},
                     {floatVariable(10), words(0, 0)}, // as it is
                     {boolean(3), words(1, 0)},
                     {boolean(4), words(0, 0)}});
    world.settle();
    EXPECT_EQ(world.value(floatVariable(1)), 123.456F);
    EXPECT_EQ(world.value(floatVariable(2)), -2.5F);
    EXPECT_EQ(world.value(floatVariable(9)), 100.0F);
    EXPECT_EQ(world.on(), "STDMSG1 CoilVar3");
    EXPECT_EQ(world.takeWrites().size(), 4u);
    world.show(regular(2));
    EXPECT_THAT(world.takeWrites(), ElementsAre("Write Single Coil 502: off", "Write Single Coil 503: on",
                                                ::testing::StartsWith("Write Multiple Registers 1000..1003"),
                                                ::testing::StartsWith("Write Multiple Registers 1016..1017"),
                                                "Write Single Coil 320: off", "Write Single Coil 321: on"));
    EXPECT_EQ(world.value(floatVariable(2)), 1.0F);
    EXPECT_EQ(world.on(), "STDMSG2 CoilVar4");
}

TEST(AcceptanceRun, WritesAtMost123RegistersAtOnce) {
    World world;
    std::map<Item, HeldWords> values;
    for (std::size_t number = 1; number <= floatVariableCount; ++number)
        values[floatVariable(number)] = words(static_cast<std::uint16_t>(number), 0x4000);
    world.run.write(values);
    world.settle();
    EXPECT_THAT(world.takeWrites(),
                ElementsAre(::testing::StartsWith("Write Multiple Registers 1000..1121"),
                            ::testing::StartsWith("Write Multiple Registers 1122..1127")));
    world.end();
    EXPECT_EQ(world.display.registers, DeviceMemory().registers);
}

TEST(AcceptanceRun, PutsBackMessagesThenBooleansThenFloats) {
    World world;
    world.set(regular(9), true);
    world.show(emergency(1));
    world.run.write({{floatVariable(1), words(1, 2)}, {boolean(1), words(1, 0)}});
    world.settle();
    world.takeWrites();
    world.end();
    EXPECT_THAT(world.takeWrites(),
                ElementsAre("Write Single Coil 300: off", "Write Single Coil 328: on",
                            "Write Single Coil 500: off",
                            ::testing::StartsWith("Write Multiple Registers 1000..1001")));
}

TEST(AcceptanceRun, AVariableThatOthersWroteOverStays) {
    World world;
    world.run.write({{floatVariable(1), words(1, 2)}, {floatVariable(2), words(3, 4)}});
    world.settle();
    world.set(floatVariable(1), 7.5F);
    world.end();
    EXPECT_EQ(world.value(floatVariable(1)), 7.5F);
    EXPECT_EQ(world.value(floatVariable(2)), 0.0F);
    EXPECT_EQ(world.run.changedByOthers(), items({floatVariable(1)}));
}

TEST(AcceptanceRun, KeepsWhatItIsAboutToWriteBeforeTheFirstRequest) {
    World world;
    world.set(regular(5), true);
    world.run.show(regular(1));
    while (world.kept.empty() && world.step())
        ;
    ASSERT_EQ(world.kept.size(), 1u);
    EXPECT_EQ(world.kept.front(), (std::vector<WrittenItem>{{0, {0, 0}, {1, 0}}, {4, {1, 0}, {0, 0}}}));
    EXPECT_EQ(world.writes.size(), 1u); // the first one, sent after that
}

TEST(AcceptanceRun, SwitchesNothingThatCannotBeKept) {
    World world;
    world.canKeep = false;
    world.show(regular(1));
    EXPECT_TRUE(world.run.isOver());
    EXPECT_THAT(world.writes, IsEmpty());
    EXPECT_EQ(world.run.reason(), "what is there now cannot be kept, so that nothing is switched");
}

TEST(AcceptanceRun, ARefusedWriteEndsTheRunAndIsNotItsOwn) {
    World world;
    world.set(regular(5), true);
    world.run.show(regular(1));
    for (int request = 0; request < 11; ++request) // two readings, and one message off
        ASSERT_TRUE(world.step());
    ASSERT_TRUE(world.step(Fate::Refused));
    world.set(regular(1), true);
    world.settle();
    EXPECT_EQ(world.run.reason(), "it is broken");
    EXPECT_EQ(world.on(), "STDMSG1 STDMSG5");
}

TEST(AcceptanceRun, TriesForTenSecondsToPutBack) {
    for (const bool comesBack : {true, false}) {
        World world;
        world.show(regular(1));
        world.now += 1s;
        while (!world.run.isOver() && world.now < Time(40s)) {
            world.step(comesBack && world.now > Time(15s) ? Fate::Answered : Fate::LostBefore);
            world.now += 100ms;
        }
        EXPECT_EQ(world.run.reason(), "it is broken");
        EXPECT_EQ(world.on(), comesBack ? "" : "STDMSG1");
        EXPECT_EQ(world.run.written().empty(), comesBack);
        if (!comesBack) {
            EXPECT_EQ(world.now, Time(16s + 100ms)); // it failed at 6 s
        }
    }
}

TEST(AcceptanceRun, WhatFailsDoesNotKeepTheRestFromBeingPutBack) {
    for (const Fate fate : {Fate::Refused, Fate::Acknowledged, Fate::LostBefore, Fate::LostAfter}) {
        World world;
        world.set(regular(5), true);
        world.set(boolean(1), true);
        world.show(regular(1));
        world.run.write({{floatVariable(1), words(1, 2)}, {boolean(1), words(0, 0)}});
        world.settle();
        world.run.end(world.now);
        while (!world.run.isOver()) {
            world.step([&](const std::string& request) {
                return request == "writing coil 320" && world.now < Time(10s) ? fate : Fate::Answered;
            });
            world.now += 10ms;
            if (world.now == Time(9s)) {
                EXPECT_EQ(world.on(),
                          fate == Fate::LostAfter ? "STDMSG5 CoilVar1" : "STDMSG1 STDMSG5 CoilVar1");
                EXPECT_EQ(world.value(floatVariable(1)), 0.0F);
            }
        }
        EXPECT_EQ(world.on(), "STDMSG5 CoilVar1");
        EXPECT_THAT(world.run.written(), IsEmpty());
    }
}

TEST(AcceptanceRun, AnEmergencyMessageIsNotSwitchedOffOnSuspicion) {
    World world;
    world.run.show(emergency(1));
    for (int request = 0; request < 10; ++request)
        ASSERT_TRUE(world.step());
    ASSERT_TRUE(world.step(Fate::LostBefore));
    world.set(emergency(1), true); // by somebody else
    while (!world.run.isOver()) {
        world.step();
        world.now += 100ms;
    }
    EXPECT_EQ(world.on(), "ALTMSG1");
    EXPECT_EQ(world.run.written().size(), 1u); // and it can be named
}

/// What the display has not confirmed may be carried out after it was read, or switched by others then.
TEST(AcceptanceRun, WhatComesLateIsNamedAndLeft) {
    for (const Item message : {regular(1), emergency(1)})
        for (const bool comes : {true, false}) {
            World world;
            world.set(regular(5), true);
            world.run.show(message);
            const std::string write = message.kind == Kind::Regular ? "writing coil 320" : "writing coil 300";
            while (world.requests.empty() || world.requests.back() != write)
                ASSERT_TRUE(world.step([&write](const std::string& request) {
                    return request == write ? Fate::LostBefore : Fate::Answered;
                }));
            const Time lost = world.now;
            world.settle();
            EXPECT_EQ(world.on(), "STDMSG5");
            EXPECT_FALSE(world.run.isOver());
            world.now += 1s;
            world.set(message, comes);
            while (!world.run.isOver()) {
                world.settle();
                world.now += 100ms;
            }
            EXPECT_GE(world.now, lost + AcceptanceRun::lateWithin);
            EXPECT_LT(world.now, lost + AcceptanceRun::putBackWithin);
            EXPECT_EQ(world.isOn(message), comes);
            EXPECT_EQ(world.run.written().size(), comes ? 1u : 0u); // so that it is offered
            EXPECT_TRUE(world.isOn(regular(5)));
        }
}

TEST(AcceptanceRun, WhatWasCutOffIsReadThenPutBackWhenWanted) {
    World world;
    world.set(regular(5), true);
    world.show(regular(1));
    world.run.write({{floatVariable(1), words(1, 2)}, {floatVariable(2), words(1, 2)}});
    world.settle();
    world.set(floatVariable(2), 5.0F);
    World later;
    later.display = world.display;
    later.run = AcceptanceRun(world.run.before(), world.kept.back());
    later.settle();
    EXPECT_EQ(later.run.state(), State::Waiting);
    EXPECT_THAT(later.writes, IsEmpty());
    EXPECT_EQ(later.run.written().size(), 3u);
    EXPECT_EQ(later.run.changedByOthers(), items({floatVariable(2)}));
    later.end();
    EXPECT_EQ(later.on(), "STDMSG5");
    EXPECT_EQ(later.value(floatVariable(1)), 0.0F);
    EXPECT_EQ(later.value(floatVariable(2)), 5.0F);
}

TEST(AcceptanceRun, WhatWasCutOffIsNotPutBackBecauseSomethingFails) {
    World world;
    world.show(regular(1));
    for (const bool isRead : {false, true}) {
        World later;
        later.display = world.display;
        later.run = AcceptanceRun(world.run.before(), world.kept.back());
        if (isRead)
            later.settle();
        later.now += 1s;
        ASSERT_TRUE(later.step(Fate::LostBefore));
        later.settle();
        EXPECT_TRUE(later.run.isOver());
        EXPECT_THAT(later.writes, IsEmpty());
        EXPECT_EQ(later.on(), "STDMSG1");
    }
}

/// Two runs on one display, as from two computers: they cannot know of each other.
TEST(AcceptanceRun, TwoAtOneDisplayNameEachOtherAndSwitchNoEmergencyOffThatIsNotTheirOwn) {
    World one;
    World two;
    const auto hand = [](World& from, World& to) {
        to.display = from.display;
        to.now = from.now;
    };
    one.set(regular(5), true);
    one.show(regular(1));
    hand(one, two);
    two.show(regular(2));
    hand(two, one);
    one.wait(1s);
    one.show(regular(3));
    hand(one, two);
    two.wait(1s);
    EXPECT_EQ(one.run.changedByOthers(), items({regular(1), regular(2)}));
    EXPECT_EQ(two.run.changedByOthers(), items({regular(3)}));
    two.show(emergency(1));
    hand(two, one);
    one.wait(1s);
    EXPECT_TRUE(one.run.isOver());
    EXPECT_EQ(one.run.reason(), "ALTMSG1 came on, which was not switched here");
    EXPECT_EQ(one.on(), "STDMSG5 ALTMSG1");
    hand(one, two);
    two.end();
    EXPECT_FALSE(two.isOn(emergency(1)));
    EXPECT_TRUE(two.isOn(regular(5)));
}

/// A run beside a second client that writes what it likes, with failures, and with the program killed. What
/// the display would hold without the run is known at any time.
class RandomRun {
public:
    explicit RandomRun(unsigned seed) : random_(seed) {
        for (const Item item : {regular(2), regular(5), regular(30), boolean(1), boolean(4)})
            if (below(2) == 0)
                othersFlip(item);
        world_.set(floatVariable(2), 1.5F);
        registers_ = world_.display.registers;
        flipped_.clear();
    }

    void check() {
        for (std::size_t actions = 5 + below(25); actions > 0 && !world_.run.isOver(); --actions)
            act();
        if (below(2) == 0)
            world_.run.end(world_.now);
        else
            cutOff();
        while (!world_.run.isOver()) {
            step(Fate::Answered);
            world_.now += 50ms;
        }
        const bool isSettled = world_.run.written().empty();
        EXPECT_TRUE(isSettled || mayBeUnclear_);
        for (const DisplayItem& item : displayItems(world_.project))
            if (isSettled && !item.isFloat()) {
                EXPECT_EQ(world_.isOn(item.item), theirs_.contains(item.item)) << item.name();
            }
        if (isSettled) {
            EXPECT_EQ(world_.display.registers, registers_);
        }
    }

private:
    std::size_t below(std::size_t bound) { return random_() % bound; }

    void othersFlip(Item item) {
        // What changes twice between two readings nobody can see, nor who did what the display did not
        // confirm.
        if (!flipped_.insert(item).second || (mayBeUnclear_ && isWritten(item)))
            return;
        const bool on = !world_.isOn(item);
        world_.set(item, on);
        ours_.erase(item);
        if (on)
            theirs_.insert(item);
        else
            theirs_.erase(item);
    }

    bool isWritten(Item item) const {
        return std::ranges::any_of(world_.run.written(), [&](const WrittenItem& written) {
            return world_.run.items().at(written.place).item == item;
        });
    }

    bool step(Fate fate) {
        const std::set<Item> before = emergenciesOn();
        const bool isSent = world_.step(fate);
        const std::set<Item> now = emergenciesOn();
        for (const Item message : before)
            if (!now.contains(message)) {
                EXPECT_TRUE(ours_.contains(message)) << nameOf(message) << " was switched off";
            }
        for (const Item message : now)
            if (!before.contains(message))
                ours_.insert(message);
        return isSent;
    }
    std::set<Item> emergenciesOn() const {
        std::set<Item> on;
        for (std::size_t number = 1; number <= emergencyMessageCount; ++number)
            if (world_.isOn(emergency(number)))
                on.insert(emergency(number));
        return on;
    }
    void settle() {
        const std::size_t sent = world_.requests.size();
        while (step(Fate::Answered))
            ;
        if (world_.requests.size() > sent)
            flipped_.clear();
    }

    void act() {
        switch (below(6)) {
        case 0:
        case 1:
            world_.run.show(below(4) == 0 ? emergency(1 + below(3)) : regular(1 + below(6)));
            return stepOn();
        case 2:
            world_.run.write(
                {{floatVariable(1 + below(3)), words(1, 2)}, {boolean(1 + below(5)), words(1, 0)}});
            return stepOn();
        case 3:
            settle();
            return othersFlip(below(8) == 0 ? emergency(1 + below(5)) : regular(1 + below(8)));
        case 4:
            settle();
            return othersFlip(boolean(1 + below(5)));
        default:
            world_.now += 1s;
            return settle();
        }
    }

    /// Some steps, during which emergency messages may come that are never shown, or the display may fail.
    void stepOn() {
        for (std::size_t steps = below(20); steps > 0; --steps) {
            if (below(60) == 0)
                othersFlip(emergency(10 + below(3)));
            const bool fails = below(60) == 0;
            const Fate fate = fails ? std::array{Fate::Refused, Fate::LostBefore, Fate::LostAfter}[below(3)]
                                    : Fate::Answered;
            if (!step(fate))
                return;
            mayBeUnclear_ = mayBeUnclear_ || fails;
            if (fails)
                return settle();
        }
    }

    void cutOff() {
        const auto before = world_.run.before();
        world_.run =
            AcceptanceRun(before, world_.kept.empty() ? std::vector<WrittenItem>() : world_.kept.back());
        settle();
        world_.run.end(world_.now);
    }

    std::mt19937 random_;
    World world_;
    std::set<Item> theirs_; ///< coils that are on by others' will
    std::set<Item> ours_;   ///< emergency messages that the run has switched on
    std::set<Item> flipped_;
    std::vector<std::uint16_t> registers_;
    bool mayBeUnclear_ = false;
};

TEST(AcceptanceRun, LeavesAThousandDisplaysAsOthersWantThem) {
    for (unsigned seed = 0; seed < 1'000 && !::testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomRun(seed).check();
    }
}

} // namespace
} // namespace orvista

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "operations/gestures/clipping_operation.h"
#include "operations/gestures/folding_operation.h"
#include "operations/gestures/punish_operation.h"
#include "operations/gestures/selection_operation.h"

namespace {

using namespace ulk3d;

enum class gesture_t { double_click, button, shift_button, motion, shift_motion, shift_wheel };
using enum gesture_t;
constexpr gesture_t all_gestures[] = {double_click, button, shift_button, motion, shift_motion, shift_wheel};

/// A gesture at (31, -4), or of -2 notches.
struct event_t {
    gesture_t gesture;
    std::uint32_t button;
    bool release;
    std::uint32_t held;

    bool is_with_shift() const {
        return gesture == shift_button || gesture == shift_motion || gesture == shift_wheel;
    }
};

std::uint32_t send(operation_t& operation, const event_t& event) {
    switch (event.gesture) {
        case double_click:
            return operation.on_double_click(event.button, 31, -4);
        case button:
            return operation.on_button(event.button, event.release, 31, -4);
        case shift_button:
            return operation.on_shift_button(event.button, event.release, 31, -4);
        case motion:
            return operation.on_motion(31, -4);
        case shift_motion:
            return operation.on_shift_motion(31, -4);
        case shift_wheel:
            return operation.on_shift_wheel(-2, 31, -4);
    }
    return 0xDEAD;
}

/// Slots that note which signals were raised, with what, and answer as they are told. The slot of a pick
/// hands one hit to the receiver, so that its name follows.
struct recorder_t {
    std::string log;
    bool answer = true;

    void note(const std::string& text) { log += (log.empty() ? "" : "; ") + text; }

    void notice(notice_signal_t& signal, const std::string& name) {
        signal.connect([this, name] { note(name); });
    }
    void hit(hit_signal_t& signal, const std::string& name) {
        signal.connect([this, name](std::uint64_t model, std::uint64_t element) {
            note(name + " " + std::to_string(model) + " " + std::to_string(element));
            return true;
        });
    }
    void pick(pick_signal_t& signal) {
        signal.connect([this](int x, int y, float w, float h, const hit_signal_t& receiver) {
            EXPECT_EQ(w, std::trunc(w));
            EXPECT_EQ(h, std::trunc(h));
            note("pick " + std::to_string(x) + " " + std::to_string(y) + " " +
                 std::to_string(std::lround(w)) + " " + std::to_string(std::lround(h)));
            receiver.emit(0xFFFFFFFFFFFFFFFF, 9);
            return answer;
        });
    }
    void place(place_signal_t& signal, const std::string& name) {
        signal.connect([this, name](int x, int y) {
            note(name + " " + std::to_string(x) + " " + std::to_string(y));
            return answer;
        });
    }

    void connect(selection_t& operation) {
        notice(operation.clear, "clear");
        hit(operation.select, "select");
        hit(operation.unselect, "unselect");
        pick(operation.pick);
        place(operation.move_begin, "move_begin");
        place(operation.move, "move");
        operation.move_end.connect([this] {
            note("move_end");
            return answer;
        });
        operation.wheel.connect([this](int delta) {
            note("wheel " + std::to_string(delta));
            return answer;
        });
    }
    void connect(punish_t& operation) {
        notice(operation.clear, "clear");
        hit(operation.select, "select");
        hit(operation.unselect, "unselect");
        pick(operation.pick);
        place(operation.apply, "apply");
        notice(operation.refresh, "refresh");
    }
    void connect(clipping_t& operation) {
        notice(operation.clear, "clear");
        pick(operation.pick);
        hit(operation.select, "select");
        hit(operation.unselect, "unselect");
        notice(operation.apply, "apply");
    }
    void connect(folding_t& operation) {
        notice(operation.clear, "clear");
        hit(operation.set_first, "set_first");
        hit(operation.set_second, "set_second");
        pick(operation.pick);
    }
};

constexpr const char* narrow_select = "pick 31 -4 3 3; select 18446744073709551615 9";
constexpr const char* wide_unselect = "pick 31 -4 5 5; unselect 18446744073709551615 9";
constexpr const char* wide_first = "pick 31 -4 5 5; set_first 18446744073709551615 9";
constexpr const char* wide_second = "pick 31 -4 5 5; set_second 18446744073709551615 9";

/// A gesture that means something. What is not given may be anything. The result is 1 when the slots answer
/// true; when they answer false it is 0, unless `always` is set.
struct meaning_t {
    gesture_t gesture;
    std::optional<std::uint32_t> button;
    std::optional<bool> release;
    std::optional<std::uint32_t> held;
    std::string signals;
    std::string then;  ///< the signal that follows an answer of true
    bool always = false;

    bool fits(const event_t& event) const {
        return event.gesture == gesture && button.value_or(event.button) == event.button &&
               release.value_or(event.release) == event.release && held.value_or(event.held) == event.held;
    }
};

constexpr auto any = std::nullopt;

const std::vector<meaning_t> selection_meanings = {
    {double_click, 2, any, any, "clear", "", true}, {button, 0, false, any, narrow_select, ""},
    {button, 2, false, any, wide_unselect, ""},     {motion, any, any, 1, narrow_select, ""},
    {motion, any, any, 4, wide_unselect, ""},       {shift_button, 0, false, any, "move_begin 31 -4", ""},
    {shift_button, 0, true, any, "move_end", ""},   {shift_motion, any, any, 1, "move 31 -4", ""},
    {shift_wheel, any, any, 0, "wheel -2", ""},
};
const std::vector<meaning_t> punish_meanings = {
    {double_click, 2, any, any, "clear", "", true}, {button, 0, false, any, narrow_select, ""},
    {button, 2, false, any, wide_unselect, ""},     {motion, any, any, 1, narrow_select, ""},
    {motion, any, any, 4, wide_unselect, ""},       {shift_button, 0, true, any, "apply 31 -4", "refresh"},
};
const std::vector<meaning_t> clipping_meanings = {
    {double_click, 2, any, any, "clear", "", true},  {button, 0, false, any, narrow_select, "apply"},
    {button, 2, false, any, wide_unselect, "apply"}, {motion, any, any, 1, narrow_select, "apply"},
    {motion, any, any, 4, wide_unselect, "apply"},
};
const std::vector<meaning_t> folding_meanings = {
    {double_click, 2, any, any, "clear", "", true}, {button, 0, false, any, wide_second, ""},
    {button, 2, false, any, wide_first, ""},        {motion, any, any, 1, wide_second, ""},
    {motion, any, any, 4, wide_first, ""},
};

std::vector<event_t> all_events() {
    std::vector<event_t> events;
    for (const gesture_t gesture : all_gestures)
        for (const std::uint32_t number : {0U, 1U, 2U, 3U, 4U, 32U, 0xFFFFFFFFU})
            for (const bool release : {false, true})
                for (const std::uint32_t held : {0U, 1U, 2U, 4U})
                    events.push_back({gesture, number, release, held});
    return events;
}

/// Holds the event's button in the state that the gesture belongs to, and another one in all other states.
input_state_t input_of(const event_t& event) {
    input_state_t input;
    input.button.fill(event.held == left_button_held ? right_button_held : left_button_held);
    input.modifier = event.is_with_shift() ? modifier_shift : modifier_none;
    input.button[input.modifier] = event.held;
    return input;
}

std::string name_of(const event_t& event) {
    return "gesture " + std::to_string(static_cast<int>(event.gesture)) + ", button " +
           std::to_string(event.button) + (event.release ? " released" : " pressed") + ", held " +
           std::to_string(event.held);
}

/// Sends every event, with either answer: the events of the table raise its signals, all others none.
template <class Operation>
void expect_meanings(const std::vector<meaning_t>& meanings) {
    for (const event_t& event : all_events())
        for (const bool answer : {false, true}) {
            const input_state_t input = input_of(event);
            Operation operation(&input);
            recorder_t recorder;
            recorder.answer = answer;
            recorder.connect(operation);
            std::string signals;
            std::uint32_t result = 0;
            for (const meaning_t& meaning : meanings)
                if (meaning.fits(event)) {
                    signals = meaning.signals;
                    if (answer && !meaning.then.empty())
                        signals += "; " + meaning.then;
                    result = answer || meaning.always;
                }
            EXPECT_EQ(send(operation, event), result) << name_of(event) << ", answer " << answer;
            EXPECT_EQ(recorder.log, signals) << name_of(event) << ", answer " << answer;
        }
}

TEST(Operations, SelectionGestures) {
    expect_meanings<selection_t>(selection_meanings);
}

TEST(Operations, PunishGestures) {
    expect_meanings<punish_t>(punish_meanings);
}

TEST(Operations, ClippingGestures) {
    expect_meanings<clipping_t>(clipping_meanings);
}

TEST(Operations, FoldingGestures) {
    expect_meanings<folding_t>(folding_meanings);
}

TEST(Operations, BaseMeansNothingByAnyGesture) {
    for (const event_t& event : all_events()) {
        const input_state_t input = input_of(event);
        operation_t operation(&input);
        EXPECT_EQ(send(operation, event), 0U) << name_of(event);
    }
}

template <class Operation>
class UnconnectedOperation : public testing::Test {};
using operations_t = testing::Types<selection_t, punish_t, clipping_t, folding_t>;
TYPED_TEST_SUITE(UnconnectedOperation, operations_t);

TYPED_TEST(UnconnectedOperation, GivesZeroForAllButTheClearingDoubleClick) {
    for (const event_t& event : all_events()) {
        const input_state_t input = input_of(event);
        TypeParam operation(&input);
        const bool clears = event.gesture == double_click && event.button == 2;
        EXPECT_EQ(send(operation, event), clears ? 1U : 0U) << name_of(event);
    }
}

TYPED_TEST(UnconnectedOperation, HasTheGesturesOfTheBaseAndCanNotBeCopied) {
    static_assert(std::is_base_of_v<operation_t, TypeParam>);
    static_assert(std::has_virtual_destructor_v<TypeParam>);
    static_assert(!std::is_copy_constructible_v<TypeParam> && !std::is_copy_assignable_v<TypeParam>);
}

TEST(Operations, SelectionPressOnEmptySpacePicksAndGivesZero) {
    const input_state_t input;
    selection_t operation(&input);
    int picks = 0;
    int hits = 0;
    operation.pick.connect([&picks](int, int, float, float, const hit_signal_t&) {
        ++picks;
        return false;
    });
    operation.select.connect([&hits](std::uint64_t, std::uint64_t) {
        ++hits;
        return true;
    });
    EXPECT_EQ(operation.on_button(left_button, false, 1, 2), 0U);
    EXPECT_EQ(picks, 1);
    EXPECT_EQ(hits, 0);
}

TEST(Operations, FoldingDoubleClickResetsTheVerticesToNone) {
    static constexpr std::uint64_t none = 0xFFFFFFFFFFFFFFFF;
    const input_state_t input;
    folding_t operation(&input);
    std::vector<std::uint64_t> vertices{1, 2, 3, 4};
    operation.clear.connect([&vertices] { vertices.assign(4, none); });
    EXPECT_EQ(operation.on_double_click(left_button, 0, 0), 0U);
    EXPECT_EQ(vertices, (std::vector<std::uint64_t>{1, 2, 3, 4}));
    EXPECT_EQ(operation.on_double_click(right_button, 0, 0), 1U);
    EXPECT_EQ(vertices, (std::vector<std::uint64_t>{none, none, none, none}));
}

TEST(Operations, DragFollowsTheButtonThatIsHeldNow) {
    input_state_t input;
    clipping_t operation(&input);
    recorder_t recorder;
    recorder.connect(operation);
    ASSERT_TRUE(input.press_or_release(right_button, false));
    EXPECT_EQ(operation.on_motion(31, -4), 1U);
    EXPECT_EQ(operation.on_motion(31, -4), 1U);
    const std::string once = std::string(wide_unselect) + "; apply";
    EXPECT_EQ(recorder.log, once + "; " + once);
    ASSERT_TRUE(input.press_or_release(right_button, true));
    EXPECT_EQ(operation.on_motion(31, -4), 0U);
    EXPECT_EQ(recorder.log, once + "; " + once);
}

}  // namespace

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

#include "model/edit_history.h"
#include "support/gl_context.h"
#include "support/points_model.h"

/// Sequences of edits, undos and redos against a model of them that keeps whole copies of the arrays' bits.
namespace {

using namespace ulk3d;
using namespace ulk_test;

using words_t = std::vector<std::uint32_t>;
constexpr std::size_t point_count = 10;
constexpr std::size_t stride = 7;

/// Bit patterns that arithmetic or a copy through another type would lose.
constexpr std::uint32_t delicate_words[] = {
    0x7FC00000, 0xFFC00001, 0x7F800001, 0xFFBFFFFF, 0x7FFFFFFF, 0x80000000,
    0x00000000, 0x00000001, 0x807FFFFF, 0x7F800000, 0xFF800000, 0x7F7FFFFF,
};

class sequence_t {
  public:
    explicit sequence_t(unsigned seed) : random(seed), words(point_count * stride) {
        for (std::uint32_t& word : words)
            word = any_word();
    }

    void run(int steps) {
        std::vector<float> floats;
        for (const std::uint32_t word : words)
            floats.push_back(std::bit_cast<float>(word));
        ASSERT_TRUE(model.add(control_point_elements(), floats));
        for (int i = 0; i < steps; ++i) {
            step();
            ASSERT_EQ(bits(), words) << "step " << i;
            ASSERT_EQ(history.undo_edits().size(), undos.size()) << "step " << i;
            ASSERT_EQ(history.redo_edits().size(), redos.size()) << "step " << i;
        }
    }

  private:
    /// What an edit changes, as a whole: the words that it covers, and what they become by the next exchange.
    struct plain_edit_t {
        std::vector<std::size_t> places;
        words_t values;
    };

    std::uint32_t any_word() {
        if (random() % 3 == 0)
            return delicate_words[random() % std::size(delicate_words)];
        return std::bit_cast<std::uint32_t>(std::uniform_real_distribution<float>(-9, 9)(random));
    }
    words_t bits() const {
        words_t result;
        const array_span<const std::uint32_t> mapped(model.arrays[0]);
        result.assign(mapped.span().begin(), mapped.span().end());
        return result;
    }

    void step() {
        switch (random() % 5) {
            case 0:
                return drag();
            case 1:
                return push();
            case 2:
                return scroll();
            case 3:
                history.undo(model);
                return exchange(undos, redos);
            default:
                history.redo(model);
                return exchange(redos, undos);
        }
    }

    void choose_points() {
        model.selection.assign(point_count, false);
        for (std::size_t i = 0; i < point_count; ++i)
            model.selection[i] = random() % 3 == 0;
    }
    /// The words of a member of all selected points, as they are.
    plain_edit_t recorded(std::size_t offset, std::size_t count) const {
        plain_edit_t edit;
        for (std::size_t i = 0; i < point_count; ++i)
            for (std::size_t k = 0; model.selection[i] && k < count; ++k) {
                edit.places.push_back(i * stride + offset + k);
                edit.values.push_back(words[edit.places.back()]);
            }
        return edit;
    }

    void drag() {
        choose_points();
        plain_edit_t edit = recorded(0, 3);
        history.open(0, 0, model);
        const float way = random() % 4 == 0 ? 0.0F : 1.5F;
        history.move(model, {3, 4, 5});
        history.move(model, {way, 0, 0});
        bool has_moved = false;
        for (std::size_t i = 0; i < edit.places.size(); ++i) {
            const float before = std::bit_cast<float>(edit.values[i]);
            const float after = before + (i % 3 == 0 ? way : 0.0F);
            words[edit.places[i]] = std::bit_cast<std::uint32_t>(after);
            has_moved = has_moved || !(std::fabs(before - after) <= 2e-5F);
        }
        EXPECT_EQ(history.close(model), has_moved);
        if (has_moved)
            undos.push_back(edit);
    }

    void scroll() {
        choose_points();
        const plain_edit_t edit = recorded(0, 3);
        history.open(0, 0, model);
        history.wheel(model, 3);
        for (std::size_t i = 0; i < edit.places.size(); ++i) {
            const float after = std::bit_cast<float>(edit.values[i]) + (i % 3 == 2 ? -1.5F : 0.0F);
            words[edit.places[i]] = std::bit_cast<std::uint32_t>(after);
        }
        undos.push_back(edit);
    }

    /// A dialog writes the array and pushes what stood there.
    void push() {
        choose_points();
        const bool colours = random() % 2 == 0;
        const plain_edit_t edit = recorded(colours ? 3 : 0, colours ? 4 : 3);
        edit_t made;
        made.member = colours ? 1 : 0;
        for (std::size_t i = 0; i < edit.places.size(); i += colours ? 4 : 3) {
            const auto value = [&edit, i](std::size_t k) { return std::bit_cast<float>(edit.values[i + k]); };
            made.points.push_back(
                {{value(0), value(1), value(2), colours ? value(3) : 0}, edit.places[i] / stride});
        }
        history.push(made);
        const array_span<std::uint32_t> mapped(model.arrays[0]);
        for (const std::size_t place : edit.places) {
            words[place] = any_word();
            mapped[place] = words[place];
        }
        undos.push_back(edit);
    }

    void exchange(std::vector<plain_edit_t>& from, std::vector<plain_edit_t>& to) {
        if (from.empty())
            return;
        plain_edit_t edit = from.back();
        from.pop_back();
        for (std::size_t i = 0; i < edit.places.size(); ++i)
            std::swap(edit.values[i], words[edit.places[i]]);
        to.push_back(edit);
    }

    std::mt19937 random;
    points_model_t model;
    edit_history_t history;
    words_t words;
    std::vector<plain_edit_t> undos, redos;
};

struct EditSequence : gl_test {};

TEST_F(EditSequence, AnySequenceKeepsEveryBit) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        sequence_t sequence(seed);
        sequence.run(200);
        ASSERT_FALSE(HasFatalFailure()) << "seed " << seed;
    }
}

}  // namespace

// Buffers ask for their stores, which are made at the first use with the content that they would have had.

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <vector>

#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/failing_stores.h"
#include "support/gl_context.h"
#include "support/gl_state.h"
#include "support/poisoned_stores.h"
#include "support/watched_stores.h"
#include "utils/memory/memory_budget.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr std::uint32_t mark = restart_mark;

element_list_t one_word() {
    static const element_list_t list = make_element_list({e_type_t::PointSize});
    return list;
}

element_list_t position() {
    static const element_list_t list = make_element_list({e_type_t::Position});
    return list;
}

std::vector<std::uint32_t> words_of(const array_t& array) {
    const array_span<const std::uint32_t> words(array);
    return {words.begin(), words.end()};
}

std::vector<std::uint32_t> words_of(const element_array_t& array) {
    const const_index_span words(array);
    return {words.begin(), words.end()};
}

bool has_store(const array_t& array) {
    return gl_store_size(array.buffer_id()) > 0;
}
bool has_store(const element_array_t& array) {
    return gl_store_size(array.buffer_id()) > 0;
}
bool has_store(const feedback_buffer_t& buffer) {
    return gl_store_size(buffer.buffer_id()) > 0;
}

/// New stores have garbage in them, and a draw has a place to go.
struct FirstUse : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        target.emplace(4, 4);
        target->bind();
        poison.emplace();
    }
    void TearDown() override {
        poison.reset();
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        gl_test::TearDown();
    }

    std::optional<render_target_t> target;
    std::optional<poisoned_stores> poison;
};

TEST_F(FirstUse, NothingIsMadeBefore) {
    array_t array;
    ASSERT_TRUE(array.allocate(3, one_word()));
    ASSERT_TRUE(array.fill(0, 7));
    ASSERT_TRUE(array.extend(2));
    ASSERT_TRUE(array.reserve(20));
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(4));
    ASSERT_TRUE(elements.fill(0, mark));
    ASSERT_TRUE(elements.extend(9));
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(5));
    EXPECT_FALSE(has_store(array));
    EXPECT_FALSE(has_store(elements));
    EXPECT_FALSE(has_store(feedback));
    EXPECT_EQ(array.byte_size(), 80);
    EXPECT_EQ(elements.byte_size(), 4 * 9 * 4);
    EXPECT_EQ(feedback.byte_size(), 20);
    EXPECT_TRUE(array.holds(20));
}

TEST_F(FirstUse, OfAnArrayMakesItsStore) {
    struct way_t {
        const char* name;
        std::function<void(array_t&)> use;
    };
    const std::uint32_t word = 8;
    std::uint32_t read = 0;
    const way_t ways[] = {
        {"mapping", [](array_t& a) { EXPECT_EQ(words_of(a), (std::vector<std::uint32_t>(3, 7))); }},
        {"binding",
         [](array_t& a) {
             a.bind();
             a.unbind();
         }},
        {"writing one", [&](array_t& a) { EXPECT_TRUE(a.write_one(1, &word)); }},
        {"reading one",
         [&](array_t& a) {
             a.read_one(2, &read);
             EXPECT_EQ(read, 7U);
         }},
        {"drawing",
         [](array_t& a) {
             const auto holder = vertex_array_ref::make();
             holder->allocate();
             a.bind_to(holder, 0);
             EXPECT_FALSE(has_store(a)) << "feeding a vertex array is no use yet";
             EXPECT_TRUE(draw(holder, GL_POINTS, 3));
         }},
        {"filling a part", [](array_t& a) { EXPECT_TRUE(a.fill(1, 9)); }},
    };
    for (const way_t& way : ways) {
        SCOPED_TRACE(way.name);
        array_t array;
        ASSERT_TRUE(array.allocate(3, one_word()));
        ASSERT_TRUE(array.fill(0, 7));
        ASSERT_FALSE(has_store(array));
        way.use(array);
        EXPECT_EQ(gl_store_size(array.buffer_id()), 12);
        EXPECT_EQ(words_of(array).front(), 7U);
    }
}

TEST_F(FirstUse, WriteAllLeavesItsWords) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, one_word()));
    ASSERT_TRUE(array.fill(0, 7));
    const std::uint32_t words[] = {1, 2};
    array.write_all(words);
    EXPECT_EQ(words_of(array), (std::vector<std::uint32_t>{1, 2}));
}

TEST_F(FirstUse, TellsApartWhatWasFilled) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    ASSERT_TRUE(elements.fill(0, mark));
    ASSERT_TRUE(elements.extend(5));
    ASSERT_TRUE(elements.fill(3, mark));
    EXPECT_FALSE(has_store(elements));
    ASSERT_TRUE(elements.fill(4, 2));
    EXPECT_TRUE(has_store(elements));
    EXPECT_EQ(words_of(elements), (std::vector<std::uint32_t>{mark, mark, mark, mark, 2}));
    ASSERT_TRUE(elements.fill(0, 1));
    EXPECT_EQ(words_of(elements), (std::vector<std::uint32_t>(5, 1)));
}

TEST_F(FirstUse, FillsNothingThatIsOverwritten) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, one_word()));
    ASSERT_TRUE(array.fill(0, 7));
    {
        const array_span<std::uint32_t> words(array, first_words_t::overwritten);
        ASSERT_EQ(words.size(), 2U);
        EXPECT_EQ(words[1], 1U) << "the garbage of a new store";
        words[0] = 5;
    }
    const array_span<std::uint32_t> words(array, first_words_t::overwritten);
    EXPECT_EQ(words[0], 5U) << "a store that is there is left alone";
}

TEST_F(FirstUse, OfACopyIsItsOwn) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, one_word()));
    ASSERT_TRUE(array.fill(0, 7));
    array_t copy = array;
    ASSERT_TRUE(copy.unshare());
    EXPECT_FALSE(has_store(copy));
    EXPECT_EQ(words_of(copy), (std::vector<std::uint32_t>{7, 7}));
    EXPECT_FALSE(has_store(array));
    const std::uint32_t word = 3;
    ASSERT_TRUE(array.write_one(0, &word));
    EXPECT_EQ(words_of(copy), (std::vector<std::uint32_t>{7, 7}));
    array_t later = array;
    ASSERT_TRUE(later.unshare());
    EXPECT_TRUE(has_store(later));
    EXPECT_EQ(words_of(later), (std::vector<std::uint32_t>{3, 7}));
}

TEST_F(FirstUse, AfterGrowthHasTheWholeSize) {
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(2));
    ASSERT_TRUE(elements.fill(0, 4));
    ASSERT_TRUE(elements.reserve(6));
    EXPECT_EQ(words_of(elements), (std::vector<std::uint32_t>{4, 4}));
    EXPECT_EQ(gl_store_size(elements.buffer_id()), 24);
    ASSERT_TRUE(elements.reserve(12));
    EXPECT_EQ(gl_store_size(elements.buffer_id()), 48);
    EXPECT_EQ(words_of(elements), (std::vector<std::uint32_t>{4, 4}));
}

TEST_F(FirstUse, AnotherSizeGivesTheStoreBack) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(4));
    ASSERT_TRUE(feedback.provide());
    ASSERT_TRUE(feedback.allocate(4));
    EXPECT_TRUE(has_store(feedback)) << "one of the same size is used again";
    ASSERT_TRUE(feedback.allocate(6));
    EXPECT_FALSE(has_store(feedback));
    ASSERT_TRUE(feedback.provide());
    EXPECT_EQ(gl_store_size(feedback.buffer_id()), 24);
}

TEST_F(FirstUse, AfterItWasGivenBackMakesItAnew) {
    feedback_buffer_t feedback;
    feedback.give_back();
    EXPECT_FALSE(feedback.has_buffer());
    ASSERT_TRUE(feedback.allocate(4));
    feedback.give_back();
    EXPECT_FALSE(has_store(feedback));
    ASSERT_TRUE(feedback.provide());
    feedback.give_back();
    EXPECT_FALSE(has_store(feedback));
    EXPECT_EQ(feedback.element_count(), 4);
    EXPECT_EQ(feedback_span<const std::uint32_t>(feedback).size(), 4U);
    EXPECT_EQ(gl_store_size(feedback.buffer_id()), 16);
}

/// What was found in records holds for as long as none of these has happened.
TEST_F(FirstUse, OfEachKindThatMayChangeTheWordsIsCounted) {
    const std::vector<std::uint32_t> words{1, 2, 3};
    const std::function<void(array_t&)> changes[] = {
        [](array_t& a) { EXPECT_TRUE(a.allocate(4, one_word())); },
        [&](array_t& a) { EXPECT_TRUE(a.allocate(3, one_word(), words.data())); },
        [](array_t& a) { EXPECT_TRUE(a.fill(0, 9)); },
        [&](array_t& a) { EXPECT_TRUE(a.write_one(1, words.data())); },
        [&](array_t& a) { a.write_all(words.data()); },
        [](array_t& a) {
            const array_span<std::uint32_t> mapped(a);
            mapped[0] = 4;
        },
        [](array_t& a) {
            EXPECT_TRUE(a.provide());
            a.give_back();
        },
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        array_t array;
        ASSERT_TRUE(array.allocate(3, one_word()));
        ASSERT_TRUE(array.fill(0, 7));
        const std::uint64_t before = array.writes();
        static_cast<void>(words_of(array));
        std::uint32_t read = 0;
        array.read_one(0, &read);
        EXPECT_EQ(array.writes(), before);
        changes[i](array);
        EXPECT_GT(array.writes(), before) << "change " << i;
    }
}

TEST_F(FirstUse, OfAFeedbackBufferMakesItsStore) {
    const std::function<void(feedback_buffer_t&)> uses[] = {
        [](feedback_buffer_t& b) { EXPECT_TRUE(b.provide()); },
        [](feedback_buffer_t& b) { EXPECT_EQ(feedback_span<const std::uint32_t>(b).size(), 3U); },
        [](feedback_buffer_t& b) {
            b.bind();
            b.unbind();
        },
        [](feedback_buffer_t& b) {
            b.bind_base(0);
            b.unbind_base(0);
        },
    };
    for (const auto& use : uses) {
        feedback_buffer_t feedback;
        ASSERT_TRUE(feedback.allocate(3));
        use(feedback);
        EXPECT_EQ(gl_store_size(feedback.buffer_id()), 12);
    }
}

TEST_F(FirstUse, ADrawMakesTheStoresOfAllThatItReads) {
    array_t places, sizes, replaced;
    element_array_t strips;
    ASSERT_TRUE(places.allocate(3, position()));
    ASSERT_TRUE(sizes.allocate(3, one_word()));
    ASSERT_TRUE(replaced.allocate(3, one_word()));
    ASSERT_TRUE(strips.allocate(3));
    ASSERT_TRUE(strips.fill(0, 0));
    const auto holder = vertex_array_ref::make();
    holder->allocate();
    places.bind_to(holder, 0);
    replaced.bind_to(holder, 1);
    sizes.bind_to(holder, 1);
    strips.draw(holder, GL_POINTS);
    EXPECT_TRUE(has_store(places));
    EXPECT_TRUE(has_store(sizes));
    EXPECT_TRUE(has_store(strips));
    EXPECT_FALSE(has_store(replaced)) << "it does not feed the vertex array any more";
}

TEST_F(FirstUse, NothingButRestartMarksDrawsNothing) {
    array_t places;
    element_array_t strips;
    ASSERT_TRUE(places.allocate(3, position()));
    ASSERT_TRUE(strips.allocate(3));
    ASSERT_TRUE(strips.fill(0, mark));
    const auto holder = vertex_array_ref::make();
    holder->allocate();
    places.bind_to(holder, 0);
    strips.draw(holder, GL_POINTS);
    EXPECT_FALSE(has_store(places));
    EXPECT_FALSE(has_store(strips));
}

TEST_F(FirstUse, ThatFailsSaysSoAndLosesNothing) {
    constexpr const char* of_array = "buffer_t::MapBufferRange(): ptr is NULL.\narray pointer is NULL.\n";
    array_t array;
    element_array_t elements;
    feedback_buffer_t feedback;
    ASSERT_TRUE(array.allocate(2, one_word()));
    ASSERT_TRUE(array.fill(0, 7));
    ASSERT_TRUE(elements.allocate(2));
    ASSERT_TRUE(elements.fill(0, 1));
    ASSERT_TRUE(feedback.allocate(2));
    const auto holder = vertex_array_ref::make();
    holder->allocate();
    array.bind_to(holder, 0);
    const std::uint32_t word = 8;
    std::uint32_t read = 9;
    {
        const failing_stores failing(1);
        const auto told = [](const std::function<void()>& use) {
            const captured_stream errors(std::cerr);
            use();
            return errors.text();
        };
        EXPECT_EQ(told([&] { EXPECT_EQ(array.map(), nullptr); }), of_array);
        EXPECT_EQ(told([&] { EXPECT_FALSE(array.provide()); }), of_array);
        EXPECT_EQ(told([&] { EXPECT_FALSE(array.write_one(0, &word)); }), of_array);
        EXPECT_EQ(told([&] { array.read_one(0, &read); }), of_array);
        EXPECT_EQ(told([&] { array.write_all(&word); }), of_array);
        EXPECT_EQ(told([&] { EXPECT_FALSE(draw(holder, GL_POINTS, 2)); }), of_array);
        EXPECT_EQ(told([&] { elements.draw(holder, GL_POINTS); }), of_array);
        EXPECT_EQ(told([&] { EXPECT_EQ(elements.map(), nullptr); }),
                  "buffer_t::MapBufferRange(): ptr is NULL.\nelement pointer is NULL.\n");
        EXPECT_EQ(told([&] { EXPECT_FALSE(feedback.provide()); }),
                  "buffer_t::MapBufferRange(): ptr is NULL.\n");
    }
    EXPECT_EQ(read, 9U);
    while (glGetError() != GL_NO_ERROR) {
    }
    EXPECT_EQ(words_of(array), (std::vector<std::uint32_t>{7, 7}));
    EXPECT_EQ(words_of(elements), (std::vector<std::uint32_t>{1, 1}));
    EXPECT_TRUE(feedback.provide());
}

TEST_F(FirstUse, AStoreThatCanNotBeFilledIsAskedForAgain) {
    array_t array;
    ASSERT_TRUE(array.allocate(2, one_word()));
    ASSERT_TRUE(array.fill(0, 7));
    {
        const captured_stream errors(std::cerr);
        const auto original = __glewMapBufferRange;
        __glewMapBufferRange = [](GLenum, GLintptr, GLsizeiptr, GLbitfield) -> void* { return nullptr; };
        EXPECT_FALSE(array.provide());
        __glewMapBufferRange = original;
    }
    EXPECT_EQ(words_of(array), (std::vector<std::uint32_t>{7, 7}));
}

TEST_F(FirstUse, WhatIsAskedForCountsAsTaken) {
    const auto budget = libutils::memory_budget() >> 20;
    constexpr std::uint64_t gib = std::uint64_t{1} << 30;
    if (budget < 2048)
        GTEST_SKIP() << "with less than 4 GiB that are free other programs would be mistaken for the array";
    array_t array;
    ASSERT_TRUE(array.allocate(static_cast<std::int64_t>(2 * gib / 4), one_word()));
    EXPECT_LT(libutils::memory_budget() >> 20, budget - 512);
    array.release();
    EXPECT_GT(libutils::memory_budget() >> 20, budget - 512);
}

}  // namespace

#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

#include "model/modeling.h"
#include "render/gl/mapped_span.h"

namespace ulk_test {

/// A model with only arrays and a selection, which records each notification of a changed record.
struct points_model_t : ulk3d::modeling_t {
    using changes_t = std::vector<std::pair<std::uint32_t, std::uint64_t>>;

    std::uint32_t arraycount() const override { return static_cast<std::uint32_t>(arrays.size()); }
    const ulk3d::array_t* array(std::uint32_t index) const override {
        return index < arrays.size() ? &arrays[index] : nullptr;
    }
    ulk3d::array_t* array(std::uint32_t index) override {
        return index < arrays.size() ? &arrays[index] : nullptr;
    }
    void elementchanged(std::uint32_t index, std::uint64_t element) override {
        changes.emplace_back(index, element);
    }
    bool drawpoints() override { return true; }
    void draw() override {}

    /// Appends an array with the content `words`, which must be whole records. False when it can not be
    /// allocated.
    [[nodiscard]] bool add(const ulk3d::element_list_t& list, const std::vector<float>& words) {
        const auto count = static_cast<std::int64_t>(words.size() / ulk3d::words_of(list));
        return arrays.emplace_back().allocate(count, list, words.data());
    }
    /// Resizes the selection to `count` points and selects only `points`.
    void choose(std::size_t count, const std::vector<std::uint64_t>& points) {
        selection.assign(count, false);
        for (const std::uint64_t point : points)
            selection[point] = true;
    }
    std::vector<float> words(std::uint32_t index) const {
        const ulk3d::array_span<const float> mapped(arrays[index]);
        return {mapped.span().begin(), mapped.span().end()};
    }

    std::deque<ulk3d::array_t> arrays;
    changes_t changes;
};

}  // namespace ulk_test

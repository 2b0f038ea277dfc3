#include "operations/cut/strip_runs.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "operations/cut/plane_sides.h"

namespace ulk3d {
namespace {

using box_t = std::array<float, 6>;

/// A run and the two positions before it fill a word.
constexpr std::uint32_t run_size = 62;
constexpr std::uint32_t run_limit = 4 * run_size;
constexpr std::uint32_t word_bits = 64;
constexpr std::size_t group_size = 16;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr box_t no_box{infinity, infinity, infinity, -infinity, -infinity, -infinity};
/// No plane has this box on one side: the values of its corners are infinite or not-a-number.
constexpr box_t endless_box{-infinity, -infinity, -infinity, infinity, infinity, infinity};

void include(box_t& box, const pos3& p) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) {
        box = endless_box;
        return;
    }
    const std::array<float, 3> coordinates{p.x, p.y, p.z};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        box[axis] = std::min(box[axis], coordinates[axis]);
        box[axis + 3] = std::max(box[axis + 3], coordinates[axis]);
    }
}

std::uint64_t bit(std::uint32_t n) {
    return std::uint64_t{1} << n;
}

}  // namespace

void strip_runs_t::boxes_t::resize(std::size_t count) {
    for (std::vector<float>& bound : bounds)
        bound.resize(count);
}

box_t strip_runs_t::boxes_t::at(std::size_t n) const {
    box_t box;
    for (std::size_t k = 0; k < box.size(); ++k)
        box[k] = bounds[k][n];
    return box;
}

void strip_runs_t::boxes_t::set(std::size_t n, const box_t& box) {
    for (std::size_t k = 0; k < box.size(); ++k)
        bounds[k][n] = box[k];
}

void strip_runs_t::build() {
    const auto size = static_cast<std::uint32_t>(mesh.elements.size());
    const std::uint32_t count = (size + run_size - 1) / run_size;
    const std::size_t group_count = (count + group_size - 1) / group_size;
    runs.resize(count);
    // Boxes beyond the last run or group only fill up a sweep.
    run_boxes.resize(group_count * group_size);
    group_boxes.resize((group_count + 3) / 4 * 4);
    for (std::size_t n = 0; n < group_count * group_size; ++n)
        run_boxes.set(n, no_box);
    for (std::size_t n = 0; n < group_boxes.bounds[0].size(); ++n)
        group_boxes.set(n, no_box);

    std::uint32_t count_before = 0;
    for (std::uint32_t n = 0; n < count; ++n) {
        run_t& run = runs[n];
        run.begin = n * run_size;
        run.size = std::min(run_size, size - run.begin);
        run.count_before = count_before;
        fill(n);
        count_before = count_at_end(run);
    }
    for (std::size_t group = 0; group < group_count; ++group)
        fill_group(group);
    overgrown = false;
}

void strip_runs_t::fill(std::uint32_t number) {
    run_t& run = runs[number];
    const std::uint32_t word_count = (run.size + 2 + word_bits - 1) / word_bits;
    run.stride = word_count * word_bits;
    run.coordinates.assign(std::size_t{3} * run.stride, 0);
    run.words.assign(word_count, {});

    box_t box = no_box;
    float* const x = run.coordinates.data();
    float* const y = x + run.stride;
    float* const z = y + run.stride;
    for (std::uint32_t k = run.begin == 0 ? 2 : 0; k < run.size + 2; ++k) {
        const std::uint32_t index = mesh.elements[run.begin + k - 2];
        if (index >= mesh.vertices.size())
            continue;
        const pos3& p = mesh.vertices[index].position;
        x[k] = p.x;
        y[k] = p.y;
        z[k] = p.z;
        include(box, p);
    }
    run_boxes.set(number, box);
    fill_words(run);
}

void strip_runs_t::fill_words(run_t& run) const {
    const std::uint32_t ahead = std::min(run.begin, std::uint32_t{2});
    std::uint32_t in_row = 0;
    for (std::uint32_t k = 2 - ahead; k < 2; ++k)
        in_row = mesh.elements[run.begin + k - 2] < mesh.vertices.size() ? in_row + 1 : 0;
    bool leading = true;
    std::uint32_t count = 0;
    for (std::uint32_t k = 2; k < run.size + 2; ++k) {
        word_t& word = run.words[k / word_bits];
        const std::uint64_t here = bit(k % word_bits);
        const bool is_vertex = mesh.elements[run.begin + k - 2] < mesh.vertices.size();
        in_row = is_vertex ? in_row + 1 : 0;
        count = is_vertex ? count + 1 : 0;
        leading = leading && is_vertex;
        if (leading)
            word.leading |= here;
        if (in_row >= 3)
            word.closing |= here;
        if (in_row >= 3 && count % 2 == 0)
            word.flipped |= here;
    }
}

void strip_runs_t::fill_group(std::size_t group) {
    box_t box = no_box;
    for (std::size_t n = group * group_size; n < (group + 1) * group_size; ++n) {
        const box_t run = run_boxes.at(n);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box[axis] = std::min(box[axis], run[axis]);
            box[axis + 3] = std::max(box[axis + 3], run[axis + 3]);
        }
    }
    group_boxes.set(group, box);
}

std::uint32_t strip_runs_t::count_at_end(const run_t& run) const {
    std::uint32_t count = 0;
    while (count < run.size && mesh.elements[run.begin + run.size - 1 - count] < mesh.vertices.size())
        ++count;
    return count == run.size ? run.count_before + count : count;
}

std::uint64_t strip_runs_t::boxes_met(const boxes_t& boxes, const cut_plane_t& plane, std::size_t first,
                                      std::size_t count) {
    const auto corner = [&](float component, std::size_t axis, bool far) {
        return boxes.bounds[(component >= 0) == far ? axis + 3 : axis].data() + first;
    };
    const auto& [x, y, z] = plane.normal;
    return boxes_on_both_sides(plane.normal, plane.d,
                               {corner(x, 0, false), corner(y, 1, false), corner(z, 2, false)},
                               {corner(x, 0, true), corner(y, 1, true), corner(z, 2, true)}, count);
}

const std::vector<std::uint32_t>& strip_runs_t::meeting(const cut_plane_t& plane) {
    met.clear();
    const std::size_t group_count = group_boxes.bounds[0].size();
    for (std::size_t first = 0; first < group_count; first += word_bits) {
        const std::size_t count = std::min<std::size_t>(word_bits, group_count - first);
        for (std::uint64_t groups = boxes_met(group_boxes, plane, first, count); groups != 0;
             groups &= groups - 1) {
            const std::size_t run = (first + static_cast<std::size_t>(std::countr_zero(groups))) * group_size;
            if (run >= runs.size())
                break;
            for (std::uint64_t hits = boxes_met(run_boxes, plane, run, group_size); hits != 0;
                 hits &= hits - 1)
                met.push_back(
                    static_cast<std::uint32_t>(run + static_cast<std::size_t>(std::countr_zero(hits))));
        }
    }
    while (!met.empty() && met.back() >= runs.size())
        met.pop_back();
    return met;
}

void strip_runs_t::append_candidates(std::vector<candidate_t>& candidates, std::uint32_t number,
                                     const cut_plane_t& plane) {
    const run_t& run = runs[number];
    const float* const x = run.coordinates.data();
    // The last two positions of the previous word.
    side_bits_t before{};
    for (std::uint32_t w = 0; w < run.words.size(); ++w) {
        const std::size_t first = std::size_t{w} * word_bits;
        const side_bits_t sides = point_sides(plane.normal, plane.d, x + first, x + run.stride + first,
                                              x + 2 * std::size_t{run.stride} + first);
        const auto back = [](std::uint64_t now, std::uint64_t earlier, std::uint32_t steps) {
            return now << steps | earlier >> (word_bits - steps);
        };
        const std::uint64_t below1 = back(sides.below, before.below, 1),
                            below2 = back(sides.below, before.below, 2);
        const std::uint64_t above1 = back(sides.above, before.above, 1),
                            above2 = back(sides.above, before.above, 2);
        const word_t& word = run.words[w];
        const std::uint64_t flipped = run.count_before % 2 == 0 ? word.flipped : word.flipped ^ word.leading;
        const std::uint64_t one_side = (sides.below & below1 & below2) | (sides.above & above1 & above2);
        const std::uint64_t off_plane = (sides.below | sides.above) & (below1 | above1) & (below2 | above2);
        for (std::uint64_t hits = word.closing & ~one_side; hits != 0; hits &= hits - 1) {
            const auto k = static_cast<std::uint32_t>(std::countr_zero(hits));
            const bool is_flipped = (flipped >> k & 1) != 0;
            candidate_t candidate{number, w * word_bits + k - 2, is_flipped, 3};
            if ((off_plane >> k & 1) != 0) {
                // Of three corners on two sides, the lone one differs from both others.
                const std::uint64_t i = below2 >> k & 1, j = below1 >> k & 1, l = sides.below >> k & 1;
                candidate.lone = i == j ? 2 : (i == l) != is_flipped ? 1 : 0;
            }
            candidates.push_back(candidate);
        }
        before = sides;
    }
}

std::array<pos3, 3> strip_runs_t::corners(const candidate_t& candidate) const {
    const run_t& run = runs[candidate.run];
    const float* const x = run.coordinates.data() + candidate.offset;
    const float* const y = x + run.stride;
    const float* const z = y + run.stride;
    const std::size_t mi2 = candidate.flipped ? 1 : 0, mi1 = candidate.flipped ? 0 : 1;
    return {{{x[mi2], y[mi2], z[mi2]}, {x[mi1], y[mi1], z[mi1]}, {x[2], y[2], z[2]}}};
}

strip_runs_t::place_t strip_runs_t::place(const candidate_t& candidate) const {
    const run_t& run = runs[candidate.run];
    const std::uint32_t position = run.begin + candidate.offset;
    std::uint32_t count = 0;
    while (count <= candidate.offset && mesh.elements[position - count] < mesh.vertices.size())
        ++count;
    return {position, count > candidate.offset ? run.count_before + count : count};
}

void strip_runs_t::update(std::uint32_t number, std::uint32_t growth) {
    runs[number].size += growth;
    overgrown = overgrown || runs[number].size > run_limit;
    for (std::size_t n = number + 1; n < runs.size(); ++n)
        runs[n].begin += growth;
    fill(number);
    fill_group(number / group_size);
    if (number + 1 == runs.size())
        return;
    // The next run looks back at two positions of this one.
    fill(number + 1);
    fill_group((number + 1) / group_size);
    for (std::size_t n = number + 1; n < runs.size(); ++n) {
        const std::uint32_t count = count_at_end(runs[n - 1]);
        if (runs[n].count_before == count)
            break;
        runs[n].count_before = count;
    }
}

void strip_runs_t::tidy() {
    if (overgrown)
        build();
}

}  // namespace ulk3d

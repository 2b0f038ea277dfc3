#include "model/polygon/distinct_points.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

#include "model/try_allocate.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

/// What shows of a point: position, colour and size, in pairs of floats.
using point_bits_t = std::array<std::uint64_t, 4>;

point_bits_t bits_of(const vertex_t& vertex, float size) {
    static_assert(offsetof(vertex_t, texcoord) == 7 * sizeof(float));
    point_bits_t bits;
    std::memcpy(bits.data(), &vertex, 6 * sizeof(float));
    bits[3] = std::bit_cast<std::uint32_t>(vertex.color.a) | std::uint64_t{std::bit_cast<std::uint32_t>(size)}
                                                                 << 32;
    return bits;
}

/// A number whose upper bits are as good as random; points that look the same have the same.
std::uint64_t hash_of(const point_bits_t& bits) {
    constexpr point_bits_t odd_numbers = {0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9,
                                          0xD6E8FEB86659FD93};
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < bits.size(); ++i)
        hash ^= bits[i] * odd_numbers[i];
    // A product's upper bits depend on all bits below them, but the lower ones not on those above.
    return (hash ^ hash >> 32) * odd_numbers[0];
}

/// The last point met for each value of some bits of the hash: a table that stays in the nearest caches,
/// where a complete one would cost a look into far memory for each point.
class last_met_t {
  public:
    explicit last_met_t(std::size_t count)
        : entries(std::clamp(std::bit_ceil(count), fewest_entries, most_entries)) {}

    /// Meets a point, of number `index`: false when one that covers it is the last met at its place.
    template <class BitsOf>
    bool meet(std::uint32_t index, const BitsOf& bits_at) {
        const point_bits_t bits = bits_at(index);
        const std::uint64_t hash = hash_of(bits);
        entry_t& entry = entries[(hash >> 48) & (entries.size() - 1)];
        const auto tag = static_cast<std::uint32_t>(hash >> 16);
        if (entry.index != restart_mark && entry.tag == tag && bits_at(entry.index) == bits)
            return false;
        entry = {index, tag};
        return true;
    }

  private:
    struct entry_t {
        std::uint32_t index = restart_mark;
        std::uint32_t tag = 0;  ///< other bits of the hash, so that most other points are told apart here
    };
    static constexpr std::size_t fewest_entries = 1 << 10, most_entries = 1 << 16;
    std::vector<entry_t> entries;
};

}  // namespace

std::vector<std::uint32_t> uncovered_points(std::span<const vertex_t> vertices,
                                            std::span<const float> sizes) {
    const std::size_t count = std::min(vertices.size(), sizes.size());
    const auto bits_at = [&](std::size_t index) { return bits_of(vertices[index], sizes[index]); };
    last_met_t last_met(count);
    std::vector<std::uint32_t> kept;
    for (std::size_t i = count; i-- > 0;) {
        if (!last_met.meet(static_cast<std::uint32_t>(i), bits_at))
            continue;
        if (kept.size() == count / 2)
            return {};
        kept.push_back(static_cast<std::uint32_t>(i));
    }
    std::ranges::reverse(kept);
    return kept;
}

bool distinct_points_t::make_list(const array_t& vertices, const array_t& sizes) {
    const array_span<const vertex_t> points(vertices);
    const array_span<const float> point_sizes(sizes);
    const std::vector<std::uint32_t> kept = uncovered_points(points.span(), point_sizes.span());
    if (kept.empty() || !list.allocate(static_cast<std::int64_t>(kept.size())))
        return false;
    const index_span indices(list, first_words_t::overwritten);
    if (!indices)
        return false;
    std::ranges::copy(kept, indices.begin());
    return true;
}

const element_array_t* distinct_points_t::of(const array_t& vertices, const array_t& sizes) {
    const state_t state{vertices.writes(), sizes.writes(), vertices.element_count()};
    if (examined != state) {
        has_list = try_allocate([&] { return make_list(vertices, sizes); });
        if (!has_list)
            list.release();
        examined = state;
    }
    return has_list ? &list : nullptr;
}

void distinct_points_t::release() {
    list.release();
    has_list = false;
    examined = {};
}

}  // namespace ulk3d

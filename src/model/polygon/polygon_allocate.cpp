#include <algorithm>
#include <array>
#include <bit>
#include <iostream>
#include <limits>
#include <utility>

#include "gltextures/gr_check_error.h"
#include "model/polygon/polygon.h"
#include "utils/memory/memory_budget.h"

/// Allocation and resizing of a polygon's arrays.
namespace ulk3d {

using libgr::grCheckError;
using libutils::size_product;
using libutils::size_sum;

namespace {

constexpr std::int64_t selection_words = 10;  // per vertex: what the selection pass writes
constexpr std::int64_t frame_words = 9;       // per vertex: what the frame pass writes
constexpr std::uint64_t word_bytes = 4;

/// What a model without a single vertex takes: its records, and the driver's of its GL objects.
constexpr std::uint64_t model_bytes = 16 * 1024;

/// A draw call takes a signed 32-bit count. This limit also keeps all vertex indices below the restart mark.
constexpr std::uint64_t most_drawn = std::numeric_limits<std::int32_t>::max();

/// What one array of a polygon is asked to hold. Buffers without a message of their own (point sizes,
/// feedback buffers, the table of polygon ids) are counted with the first array that has as many records.
struct claim_t {
    const char* message;            ///< printed on failure
    std::uint64_t count;            ///< records
    std::uint64_t record_bytes;     ///< bytes of a record
    std::uint64_t companion_bytes;  ///< bytes, for each record, of the buffers counted with it
    std::uint64_t held_records;     ///< records that the buffer holds already
};
using claims_t = std::array<claim_t, 5>;

/// The bytes that a claim needs when its buffer grows to `growth` times the requested size.
std::uint64_t bytes_needed(const claim_t& claim, std::uint64_t growth) {
    if (claim.count <= claim.held_records)
        return 0;
    return size_product(claim.count, claim.record_bytes * growth + claim.companion_bytes);
}

/// Claims the memory of all arrays, and `besides` for what comes with them. The message of the first array
/// that can not be drawn or that memory does not suffice for; null when there is none.
const char* first_refusal(const claims_t& claims, std::uint64_t growth, std::uint64_t besides) {
    std::uint64_t all = besides;
    for (const claim_t& claim : claims)
        all = size_sum(all, bytes_needed(claim, growth));
    const bool all_drawn =
        std::ranges::all_of(claims, [](const claim_t& claim) { return claim.count <= most_drawn; });
    if (all_drawn && libutils::claim_memory(all))
        return nullptr;
    const std::uint64_t budget = libutils::memory_budget();
    std::uint64_t sum = besides;
    for (const claim_t& claim : claims) {
        sum = size_sum(sum, bytes_needed(claim, growth));
        if (claim.count > most_drawn || sum > budget)
            return claim.message;
    }
    // Memory has become free in between.
    return claims.back().message;
}

template <class Buffer>
std::uint64_t held_records(const Buffer& buffer, std::uint64_t record_bytes) {
    return static_cast<std::uint64_t>(buffer.byte_size()) / record_bytes;
}

bool fail(const char* message) {
    std::cerr << message << std::endl;
    return false;
}

/// Three indices for each polygon id; there are at most element_count - 2 ids.
template <typename Count>
Count select_count(Count element_count) {
    return element_count < 3 ? 0 : element_count * 3 - 6;
}

/// Queries the buffer itself, as what `extend` returns differs between the kinds of arrays.
template <class Array>
bool set_count(Array& array, std::int64_t count) {
    return array.has_buffer() && array.extend(count) && array.holds(count);
}

/// Makes the vertex array if there is none yet, fed by two arrays, the first of which starts at location 0.
void make_vertex_array(vertex_array_ref& holder, const array_t& first, const array_t& second,
                       GLuint second_location) {
    if (!holder)
        holder = vertex_array_ref::make();
    holder->allocate();
    first.bind_to(holder, 0);
    second.bind_to(holder, second_location);
}

bool allocate_feedback(feedback_buffer_t& selection, feedback_buffer_t& normal, std::int64_t vertex_count) {
    return selection.allocate(selection_words * vertex_count) && normal.allocate(frame_words * vertex_count);
}

// New buffers, and the new parts of grown ones, have undefined contents: these are neither shown nor saved.

/// Makes the records from `from` on zero. False when they can not be mapped.
bool clear_tail(array_t& records, std::int64_t from) {
    return records.fill(from, 0);
}

bool mark_tail(element_array_t& indices, std::int64_t from) {
    return indices.fill(from, restart_mark);
}

struct array_messages_t {
    const char *vertices, *normals, *wknmls, *elements, *selectelems;
};
constexpr array_messages_t allocate_messages = {
    "vertices.allocate() failed.", "normals.allocate() failed.",     "wknmls.allocate() failed.",
    "elements.allocate() failed.", "selectelems.allocate() failed.",
};
constexpr array_messages_t extend_messages = {
    "vertices.extend() failed.",   "normals.extend() failed.",       "wknmls.extend() failed.",
    "elements.allocate() failed.", "selectelems.allocate() failed.",
};

claims_t claims_of(const polygon_t& polygon, const array_messages_t& messages, std::uint64_t vertex_count,
                   std::uint64_t element_count) {
    constexpr std::uint64_t with_vertices = sizeof(float) + (selection_words + frame_words) * word_bytes;
    constexpr std::uint64_t with_elements = sizeof(polygon_place_t);
    // An element count beyond the limit is refused as such, so three times that many need not be counted.
    const std::uint64_t selects = select_count(std::min(element_count, most_drawn));
    return {{
        {messages.vertices, vertex_count, sizeof(vertex_t), with_vertices,
         held_records(polygon.vertices, sizeof(vertex_t))},
        {messages.normals, vertex_count, sizeof(frame_t), 0, held_records(polygon.normals, sizeof(frame_t))},
        {messages.wknmls, vertex_count, sizeof(work_frame_t), 0,
         held_records(polygon.wknmls, sizeof(work_frame_t))},
        {messages.elements, element_count, word_bytes, with_elements,
         held_records(polygon.elements, word_bytes)},
        {messages.selectelems, selects, word_bytes, 0, held_records(polygon.selectelems, word_bytes)},
    }};
}

}  // namespace

bool polygon_t::can_hold(std::uint64_t vertex_count, std::uint64_t element_count) const {
    const libutils::trial_claims_t given_back;
    return first_refusal(claims_of(*this, allocate_messages, vertex_count, element_count), 1, 0) == nullptr;
}

bool polygon_t::allocate(std::uint64_t vertex_count, std::uint64_t element_count) {
    if (const char* const refusal =
            first_refusal(claims_of(*this, allocate_messages, vertex_count, element_count), 1,
                          vertices.has_buffer() ? 0 : model_bytes))
        return fail(refusal);
    const auto vertex_total = static_cast<std::int64_t>(vertex_count);
    const auto element_total = static_cast<std::int64_t>(element_count);

    unset_frames.clear();
    grCheckError("polygon_t::allocate(0)");
    if (!vertices.allocate(vertex_total, vertex_elements()))
        return fail(allocate_messages.vertices);
    grCheckError("polygon_t::allocate(1)");
    if (!normals.allocate(vertex_total, frame_elements()))
        return fail(allocate_messages.normals);
    grCheckError("polygon_t::allocate(2)");
    if (!wknmls.allocate(vertex_total, work_frame_elements()))
        return fail(allocate_messages.wknmls);
    grCheckError("polygon_t::allocate(3)");
    if (!elements.allocate(element_total))
        return fail(allocate_messages.elements);
    grCheckError("polygon_t::allocate(4)");
    if (!pointsizes.allocate(vertex_total, size_elements()))
        return false;

    grCheckError("polygon_t::allocate(5)");
    make_vertex_arrays();
    selection.resize(vertex_count);
    if (!clearselection() || !allocate_feedback(selectionfeedback, normalfeedback, vertex_total))
        return false;

    grCheckError("polygon_t::allocate(6)");
    if (!selectelems.allocate(select_count(element_total)))
        return fail(allocate_messages.selectelems);
    const bool is_marked = mark_tail(selectelems, 0);

    grCheckError("polygon_t::allocate(7)");
    const bool is_complete =
        is_marked && clear_tail(vertices, 0) && clear_tail(normals, 0) && mark_tail(elements, 0);
    if (is_complete)
        polyidvector = polygon_places_t(id_count());
    grCheckError("polygon_t::allocate(end)");
    return is_complete;
}

void polygon_t::make_vertex_arrays() {
    const auto locations = static_cast<GLuint>(vertex_elements().size());
    make_vertex_array(drawarray, vertices, normals, locations);
    make_vertex_array(workarray, vertices, wknmls, locations);
    // The point size replaces the texture coordinate, which points do not need.
    make_vertex_array(pointarray, vertices, pointsizes, locations - 1);
}

bool polygon_t::extend(std::int64_t vertex_count, std::int64_t element_count) {
    // A buffer grows to four times the size that it is asked for. Negative counts are too large when read as
    // unsigned.
    if (const char* const refusal =
            first_refusal(claims_of(*this, extend_messages, static_cast<std::uint64_t>(vertex_count),
                                    static_cast<std::uint64_t>(element_count)),
                          4, 0))
        return fail(refusal);

    const std::int64_t old_vertices = vertices.element_count();
    const std::int64_t old_normals = normals.element_count();
    const std::int64_t old_elements = elements.element_count();
    unset_frames.clear();
    grCheckError("polygon_t::extend(start)");
    if (!set_count(vertices, vertex_count))
        return fail(extend_messages.vertices);
    if (!set_count(normals, vertex_count))
        return fail(extend_messages.normals);
    if (!set_count(wknmls, vertex_count))
        return fail(extend_messages.wknmls);
    if (!set_count(elements, element_count))
        return fail(extend_messages.elements);

    grCheckError("polygon_t::extend(3)");
    if (!set_count(pointsizes, vertex_count))
        return false;
    const std::size_t old_points = selection.size();
    selection.resize(static_cast<std::size_t>(vertex_count), false);
    if (!pointsizes.fill(static_cast<std::int64_t>(old_points),
                         std::bit_cast<std::uint32_t>(unselected_point_size)))
        return false;

    grCheckError("polygon_t::extend(4)");
    if (!allocate_feedback(selectionfeedback, normalfeedback, vertex_count))
        return false;

    grCheckError("polygon_t::extend(5)");
    const std::int64_t old_selects = selectelems.element_count();
    if (!set_count(selectelems, select_count(element_count)))
        return fail(extend_messages.selectelems);

    const bool is_complete = mark_tail(selectelems, old_selects) && clear_tail(vertices, old_vertices) &&
                             clear_tail(normals, old_normals) && mark_tail(elements, old_elements) &&
                             afterload(nullptr);
    grCheckError("polygon_t::extend(end)");
    return is_complete;
}

bool polygon_t::copy(const polygon_t& other) {
    vertices = other.vertices;
    normals = other.normals;
    wknmls = other.wknmls;
    elements = other.elements;
    selectelems = other.selectelems;
    selected_ids = other.selected_ids;
    polyidvector = other.polyidvector;
    unset_frames = other.unset_frames;
    const bool is_copied =
        copy_points(other) && vertices.unshare() && normals.unshare() && wknmls.unshare() &&
        elements.unshare() && selectelems.unshare() &&
        (!other.normalfeedback.has_buffer() || normalfeedback.allocate(other.normalfeedback.element_count()));
    if (!is_copied) {
        grCheckError("polygon_t::copy()");
        clear();
        return fail("polygon_t::copy() failed.");
    }
    if (other.drawarray)
        make_vertex_arrays();
    return true;
}

void polygon_t::swap(polygon_t& other) noexcept {
    swap_points(other);
    std::swap(vertices, other.vertices);
    std::swap(normals, other.normals);
    std::swap(wknmls, other.wknmls);
    std::swap(elements, other.elements);
    std::swap(drawarray, other.drawarray);
    std::swap(workarray, other.workarray);
    std::swap(pointarray, other.pointarray);
    normalfeedback.swap(other.normalfeedback);
    std::swap(polyidvector, other.polyidvector);
    std::swap(selectelems, other.selectelems);
    selected_ids.swap(other.selected_ids);
    std::swap(drawn_strips, other.drawn_strips);
    std::swap(distinct_points, other.distinct_points);
    unset_frames.swap(other.unset_frames);
}

}  // namespace ulk3d

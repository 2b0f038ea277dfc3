#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>

#include "render/gl/array.h"
#include "render/gl/element.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

/// What a user edits of a model's points. A NURBS model's control points have the first two.
enum class attribute_t { position, color, texcoord, tangent, binormal, normal };

/// Where an attribute stands: in which of a model's arrays, and which member of that array's element list.
struct attribute_place_t {
    std::uint32_t array;
    std::uint32_t member;
};

constexpr attribute_place_t place_of(attribute_t attribute) {
    constexpr std::uint32_t vertices = 0, frames = 1;
    constexpr attribute_place_t places[] = {{vertices, 0}, {vertices, 1}, {vertices, 2},
                                            {frames, 0},   {frames, 1},   {frames, 2}};
    return places[static_cast<std::size_t>(attribute)];
}

/// The place of one member in the records of an array of words.
struct record_member_t {
    std::uint32_t stride = 0;           ///< words of a record
    std::uint32_t offset = 0;           ///< of the member in it
    std::uint32_t components = 0;       ///< words of the member; 0 for one that does not exist
    std::optional<e_type_t> kind = {};  ///< none for a member that does not exist
};

/// Member `member` of the records of an array, counted in its element list. A member beyond the list has no
/// components, and stands behind the record.
record_member_t member_of(const array_t& array, std::uint64_t member);

/// One member of records in memory. Float is const for reading. Incomplete records at the end are none.
template <class Float>
class member_view_t {
  public:
    member_view_t() = default;
    member_view_t(std::span<Float> record_words, const record_member_t& place)
        : words(record_words), member(place) {}

    const record_member_t& place() const { return member; }
    /// Count of the records.
    std::size_t size() const { return member.stride == 0 ? 0 : words.size() / member.stride; }
    /// `count` words from the member's first one in record `index`; null unless they lie in a record.
    Float* at(std::uint64_t index, std::uint32_t count) const {
        return index < size() && member.offset + count <= member.stride
                   ? &words[index * member.stride + member.offset]
                   : nullptr;
    }

  private:
    std::span<Float> words;
    record_member_t member;
};

/// The same for an array, mapped while this lives. A null array has no records.
template <class Float>
class mapped_member_t {
  public:
    using array_type = std::conditional_t<std::is_const_v<Float>, const array_t, array_t>;

    mapped_member_t(array_type* array, std::uint64_t member) {
        if (array == nullptr)
            return;
        const record_member_t place = member_of(*array, member);
        mapping.emplace(*array);
        view = {mapping->span(), place};
    }

    const member_view_t<Float>* operator->() const { return &view; }

  private:
    std::optional<array_span<Float>> mapping;
    member_view_t<Float> view;
};

}  // namespace ulk3d

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

/// An attribute of a model's points that a user can edit. The control points of a NURBS model have the first
/// two only.
enum class attribute_t { position, color, texcoord, tangent, binormal, normal };

/// Where an attribute is stored: in which of a model's arrays, and as which member of that array's element
/// list.
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

/// Where one member lies in the records of an array of words.
struct record_member_t {
    std::uint32_t stride = 0;           ///< words of a record
    std::uint32_t offset = 0;           ///< words from the start of the record to the member
    std::uint32_t components = 0;       ///< words of the member; 0 when the array has no such member
    std::optional<e_type_t> kind = {};  ///< empty when the array has no such member
};

/// Looks up a member by its index in the array's element list. A member beyond the list has no components,
/// and its offset is the end of the record.
record_member_t member_of(const array_t& array, std::uint64_t member);

/// A view of one member of records in memory. Float is const for read-only access. An incomplete record at
/// the end is ignored.
template <class Float>
class member_view_t {
  public:
    member_view_t() = default;
    member_view_t(std::span<Float> record_words, const record_member_t& place)
        : words(record_words), member(place) {}

    const record_member_t& place() const { return member; }
    /// The number of complete records.
    std::size_t size() const { return member.stride == 0 ? 0 : words.size() / member.stride; }
    /// Points to `count` words, beginning with the member's first one in record `index`; null unless all of
    /// them lie in that record.
    Float* at(std::uint64_t index, std::uint32_t count) const {
        return index < size() && member.offset + count <= member.stride
                   ? &words[index * member.stride + member.offset]
                   : nullptr;
    }

  private:
    std::span<Float> words;
    record_member_t member;
};

/// The same view of an array, which stays mapped as long as this object lives. A null array has no records.
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
    bool is_mapped() const { return mapping && *mapping; }

  private:
    std::optional<array_span<Float>> mapping;
    member_view_t<Float> view;
};

}  // namespace ulk3d

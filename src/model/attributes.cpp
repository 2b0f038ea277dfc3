#include "model/attributes.h"

namespace ulk3d {

record_member_t member_of(const array_t& array, std::uint64_t member) {
    const std::span<const element_t> members = elements_of(array.element_list());
    record_member_t place{array.vertex_stride(), word_offset_of(array.element_list(), member)};
    if (member < members.size()) {
        place.components = component_count(members[member]);
        place.kind = members[member].type;
    }
    return place;
}

}  // namespace ulk3d

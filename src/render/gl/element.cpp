#include "render/gl/element.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ulk3d {

namespace {

struct element_kind_t {
    const char* name;
    element_format_t format;
};

// One row for each value of e_type_t. Vector3w and Matrix3w have no GL type: arrays do not feed them to
// shaders.
constexpr std::array<element_kind_t, 9> kinds{{
    {"Position", {3, GL_FLOAT, false}},
    {"Normal", {3, GL_FLOAT, true}},
    {"RGBA", {4, GL_FLOAT, true}},
    {"TexCoord3", {3, GL_FLOAT, false}},
    {"TexCoord2", {2, GL_FLOAT, false}},
    {"PointSize", {1, GL_FLOAT, false}},
    {"ID", {1, GL_UNSIGNED_INT, false}},
    {"Vector3w", {4, 0, false}},
    {"Matrix3w", {16, 0, false}},
}};

element_kind_t kind_of(element_t element) {
    const auto value = static_cast<std::size_t>(element.type);
    return value < kinds.size() ? kinds[value] : element_kind_t{nullptr, {}};
}

}  // namespace

std::uint32_t component_count(element_t element) {
    return kind_of(element).format.components;
}

const char* element_name(element_t element) {
    return kind_of(element).name;
}

element_format_t element_format(element_t element) {
    return kind_of(element).format;
}

element_list_t make_element_list(std::initializer_list<e_type_t> types) {
    element_list_t list;
    if (list.allocate(types.size()))
        std::ranges::transform(types, list.begin(), [](e_type_t type) { return element_t{type}; });
    return list;
}

std::span<const element_t> elements_of(const element_list_t& list) {
    return {list.begin(), list.size()};
}

std::uint32_t words_of(const element_list_t& list) {
    return word_offset_of(list, list.size());
}

std::uint32_t word_offset_of(const element_list_t& list, std::uint64_t index) {
    const auto elements = elements_of(list);
    std::uint32_t words = 0;
    for (const element_t element : elements.first(std::min<std::size_t>(index, elements.size())))
        words += component_count(element);
    return words;
}

bool is_same_list(const element_list_t& a, const element_list_t& b) {
    return a.begin() == b.begin();
}

}  // namespace ulk3d

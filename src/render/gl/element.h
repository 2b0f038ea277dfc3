#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <initializer_list>
#include <span>

#include "utils/memory/alloc_mmap_win.h"
#include "utils/memory/refvector2.h"

namespace ulk3d {

/// Kinds of one attribute of a vertex.
enum class e_type_t : std::uint32_t {
    Position = 0,
    Normal = 1,
    RGBA = 2,
    TexCoord3 = 3,
    TexCoord2 = 4,
    PointSize = 5,
    ID = 6,
    Vector3w = 7,
    Matrix3w = 8,
};

/// One attribute of a vertex. Values above the last kind are allowed and take up no words.
struct element_t {
    e_type_t type = e_type_t::Position;
    bool operator==(const element_t&) const = default;
};

/// 32-bit words that an attribute takes up in a vertex; 0 for an unknown kind.
std::uint32_t component_count(element_t element);

/// Name of an attribute's kind; null for an unknown kind.
const char* element_name(element_t element);

/// How an attribute is passed to glVertexAttribPointer. `type` is 0 for kinds that take up words in a vertex
/// but feed no attribute, and for unknown kinds.
struct element_format_t {
    std::uint32_t components = 0;
    GLenum type = 0;
    bool normalized = false;
};
element_format_t element_format(element_t element);

/// The attributes of a vertex, in order; the arrays built from a list share it by reference.
using element_list_t = libutils::refvector2<element_t, libutils::alloc_mmap_win>;

element_list_t make_element_list(std::initializer_list<e_type_t> types);

/// The attributes of a list; valid as long as a reference to the list is held.
std::span<const element_t> elements_of(const element_list_t& list);

/// Sum of the components of a list: 32-bit words of one vertex.
std::uint32_t words_of(const element_list_t& list);

/// Offset, in words from the start of a vertex, of the attribute at `index`; for an index past the end, the
/// words of one vertex.
std::uint32_t word_offset_of(const element_list_t& list, std::uint64_t index);

/// True when both refer to the same list, not merely to equal ones.
bool is_same_list(const element_list_t& a, const element_list_t& b);

}  // namespace ulk3d

#include "tool/foreign/library/shared_corners.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace ulktool {

namespace {

/// The arrays of a mesh that are carried.
class vertex_bytes_t {
  public:
    vertex_bytes_t(const aiMesh& mesh, unsigned int coordinates) {
        add(mesh.mVertices);
        add(mesh.mNormals);
        add(mesh.mTangents);
        add(mesh.mBitangents);
        add(mesh.mColors[0]);
        add(mesh.mTextureCoords[coordinates]);
    }

    std::size_t hash(std::uint32_t vertex) const {
        std::size_t value = 0;
        for (const array_t& array : arrays)
            value = value * 0x9E3779B97F4A7C15U + std::hash<std::string_view>()(array.bytes(vertex));
        return value;
    }

    bool are_equal(std::uint32_t a, std::uint32_t b) const {
        for (const array_t& array : arrays)
            if (array.bytes(a) != array.bytes(b))
                return false;
        return true;
    }

  private:
    struct array_t {
        const char* first;
        std::size_t record_size;
        std::string_view bytes(std::uint32_t vertex) const {
            return {first + vertex * record_size, record_size};
        }
    };

    template <typename Record>
    void add(const Record* records) {
        if (records != nullptr)
            arrays.push_back({reinterpret_cast<const char*>(records), sizeof(Record)});
    }

    std::vector<array_t> arrays;
};

}  // namespace

std::vector<std::uint32_t> first_equal_vertices(const aiMesh& mesh, unsigned int coordinates) {
    const vertex_bytes_t bytes(mesh, coordinates);
    // A table with open addresses that is at most half full.
    std::vector<std::uint32_t> table(std::bit_ceil(std::size_t{mesh.mNumVertices} * 2 + 2), no_vertex);
    std::vector<std::uint32_t> firsts(mesh.mNumVertices);
    for (std::uint32_t vertex = 0; vertex < mesh.mNumVertices; ++vertex) {
        std::size_t place = bytes.hash(vertex) & (table.size() - 1);
        while (table[place] != no_vertex && !bytes.are_equal(table[place], vertex))
            place = (place + 1) & (table.size() - 1);
        if (table[place] == no_vertex)
            table[place] = vertex;
        firsts[vertex] = table[place];
    }
    return firsts;
}

}  // namespace ulktool

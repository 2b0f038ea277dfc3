#include <assimp/mesh.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "model/vertex.h"
#include "support/memory_file.h"
#include "tool/foreign/library/scene_packets.h"
#include "tool/foreign/library/send_mesh.h"
#include "tool/foreign/library/shared_corners.h"

/// Sends meshes of any faces, positions and places, as a reader of the assimp library may make them. What
/// comes out has finite positions and strips of vertices that exist.
namespace {

/// Takes values off the front of the input; zeros behind its end.
class input_t {
  public:
    input_t(const std::uint8_t* bytes, std::size_t count) : next(bytes), left(count) {}

    template <typename Value>
    Value take() {
        Value value{};
        const std::size_t size = std::min(sizeof value, left);
        std::memcpy(&value, next, size);
        next += size;
        left -= size;
        return value;
    }
    bool is_empty() const { return left == 0; }

  private:
    const std::uint8_t* next;
    std::size_t left;
};

aiVector3D take_vector(input_t& input) {
    const float x = input.take<float>(), y = input.take<float>();
    return {x, y, input.take<float>()};
}

void fill(aiMesh& mesh, input_t& input) {
    constexpr std::uint8_t most_vertices = 16;
    mesh.mNumVertices = input.take<std::uint8_t>() % most_vertices;
    const auto parts = input.take<std::uint8_t>();
    const auto vectors = [&](int bit) {
        auto* const array = (parts >> bit & 1) != 0 ? new aiVector3D[mesh.mNumVertices] : nullptr;
        for (unsigned int i = 0; array != nullptr && i < mesh.mNumVertices; ++i)
            array[i] = take_vector(input);
        return array;
    };
    mesh.mVertices = vectors(0);
    mesh.mNormals = vectors(1);
    mesh.mTangents = vectors(2);
    mesh.mBitangents = vectors(2);
    mesh.mTextureCoords[0] = vectors(3);
    mesh.mNumFaces = input.take<std::uint8_t>();
    mesh.mFaces = new aiFace[mesh.mNumFaces];
    for (unsigned int i = 0; i < mesh.mNumFaces; ++i) {
        constexpr std::uint8_t most_corners = 6;
        aiFace& face = mesh.mFaces[i];
        face.mNumIndices = input.take<std::uint8_t>() % most_corners;
        face.mIndices = new unsigned int[most_corners];
        for (unsigned int k = 0; k < most_corners; ++k) {
            const auto corner = input.take<std::uint8_t>();
            face.mIndices[k] = corner == 255 ? 0xFFFFFFFFU : corner;
        }
    }
}

void require(bool holds) {
    if (!holds)
        std::abort();
}

void check(const std::string& bytes, bool is_sent) {
    require(is_sent == !bytes.empty());
    if (bytes.empty())
        return;
    input_t sent(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    require(sent.take<ulktool::packet_t>() == ulktool::packet_t::mesh);
    const auto head = sent.take<ulktool::mesh_head_t>();
    for (std::uint32_t i = 0; i < head.vertex_count; ++i) {
        const ulk3d::pos3 p = sent.take<ulk3d::vertex_t>().position;
        require(std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z));
    }
    for (std::uint32_t i = 0; head.frames != ulktool::frames_t::none && i < head.vertex_count; ++i) {
        const ulk3d::dir3 n = sent.take<ulk3d::frame_t>().normal;
        require(std::isfinite(n.x) && std::isfinite(n.y) && std::isfinite(n.z));
    }
    for (std::uint32_t i = 0; i < head.element_count; ++i) {
        const auto element = sent.take<std::uint32_t>();
        require(element < head.vertex_count || element == ulktool::no_vertex);
    }
    require(sent.is_empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    input_t input(data, size);
    aiMatrix4x4 place;
    const bool is_moved = input.take<std::uint8_t>() % 2 != 0;
    for (unsigned int row = 0; is_moved && row < 3; ++row)
        for (unsigned int column = 0; column < 4; ++column)
            place[row][column] = input.take<float>();
    aiMesh mesh;
    fill(mesh, input);
    static_cast<void>(ulktool::remove_unusable_faces(mesh));

    const ulk_test::memory_file_t file("mesh");
    const int descriptor = ::open(file.path(), O_WRONLY);
    bool is_sent = false;
    {
        ulktool::process_output_t output(descriptor);
        const ulktool::mesh_surface_t surface{.color = ulk3d::default_color};
        is_sent = send_mesh(mesh, place, surface, output).is_sent;
        output.flush();
    }
    ::close(descriptor);
    check(file.read(), is_sent);
    return 0;
}

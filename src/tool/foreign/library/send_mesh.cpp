#include "tool/foreign/library/send_mesh.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "model/math/vectors.h"
#include "model/vertex.h"
#include "tool/foreign/library/scene_packets.h"
#include "tool/foreign/library/shared_corners.h"
#include "tool/foreign/library/strip_builder.h"

namespace ulktool {

using ulk3d::dir3;

namespace {

bool is_finite(const aiVector3D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

std::span<const aiFace> faces_of(const aiMesh& mesh) {
    return {mesh.mFaces, mesh.mNumFaces};
}

/// What a node does to the vertices of a mesh.
class placing_t {
  public:
    explicit placing_t(const aiMatrix4x4& node) : matrix(node), linear(node), moves(node != aiMatrix4x4()) {
        const aiMatrix3x3& m = linear;
        cofactors =
            aiMatrix3x3(m.b2 * m.c3 - m.b3 * m.c2, m.b3 * m.c1 - m.b1 * m.c3, m.b1 * m.c2 - m.b2 * m.c1,
                        m.a3 * m.c2 - m.a2 * m.c3, m.a1 * m.c3 - m.a3 * m.c1, m.a2 * m.c1 - m.a1 * m.c2,
                        m.a2 * m.b3 - m.a3 * m.b2, m.a3 * m.b1 - m.a1 * m.b3, m.a1 * m.b2 - m.a2 * m.b1);
    }

    bool mirrors() const { return linear.Determinant() < 0; }

    aiVector3D position(const aiVector3D& v) const { return moves ? matrix * v : v; }
    dir3 direction(const aiVector3D& v) const { return moves ? unit(linear * v) : as_it_is(v); }
    /// By the transposed inverse, whose entries are the cofactors divided by the determinant: so it is
    /// something for flattened meshes, too.
    dir3 normal(const aiVector3D& v) const {
        return moves ? unit(cofactors * (mirrors() ? -v : v)) : as_it_is(v);
    }

  private:
    static dir3 as_it_is(const aiVector3D& v) { return is_finite(v) ? dir3{v.x, v.y, v.z} : dir3{}; }
    static dir3 unit(const aiVector3D& v) {
        const float size = v.Length();
        return std::isfinite(size) && size > 0 ? dir3{v.x / size, v.y / size, v.z / size} : dir3{};
    }

    aiMatrix4x4 matrix;
    aiMatrix3x3 linear, cofactors;
    bool moves;
};

/// True when each vertex is the corner of one triangle at most.
bool has_separate_corners(const aiMesh& mesh) {
    std::vector<bool> is_used(mesh.mNumVertices);
    for (const aiFace& face : faces_of(mesh)) {
        for (const std::uint32_t corner : std::span(face.mIndices, face.mNumIndices)) {
            if (is_used[corner])
                return false;
            is_used[corner] = true;
        }
    }
    return true;
}

/// Which vertices of a mesh are kept, and by which numbers.
struct numbering_t {
    std::vector<std::uint32_t> kept;     ///< of each new vertex the old one
    std::vector<std::uint32_t> numbers;  ///< of each old vertex the new one, or `no_vertex`
};

numbering_t number_vertices(const aiMesh& mesh, const placing_t& placing, const mesh_surface_t& surface) {
    numbering_t numbering;
    if (surface.may_share_corners && has_separate_corners(mesh)) {
        numbering.numbers = first_equal_vertices(mesh, surface.coordinates);
    } else {
        numbering.numbers.resize(mesh.mNumVertices);
        std::iota(numbering.numbers.begin(), numbering.numbers.end(), 0U);
    }
    for (std::uint32_t vertex = 0; vertex < mesh.mNumVertices; ++vertex) {
        const std::uint32_t first = numbering.numbers[vertex];
        if (first != vertex) {
            numbering.numbers[vertex] = numbering.numbers[first];
        } else if (is_finite(placing.position(mesh.mVertices[vertex]))) {
            numbering.numbers[vertex] = static_cast<std::uint32_t>(numbering.kept.size());
            numbering.kept.push_back(vertex);
        } else {
            numbering.numbers[vertex] = no_vertex;
        }
    }
    return numbering;
}

/// The vertices as they are sent.
class vertex_source_t {
  public:
    vertex_source_t(const aiMesh& of_mesh, const placing_t& with_placing, const mesh_surface_t& on_surface)
        : mesh(of_mesh),
          placing(with_placing),
          surface(on_surface),
          coordinates(mesh.mTextureCoords[surface.coordinates]) {}

    ulk3d::vertex_t vertex(std::uint32_t index) const {
        const aiVector3D p = placing.position(mesh.mVertices[index]);
        return {{p.x, p.y, p.z}, color(index), coordinate(index)};
    }

    ulk3d::frame_t frame(std::uint32_t index) const {
        ulk3d::frame_t result{.tangent = {}, .binormal = {}, .normal = placing.normal(mesh.mNormals[index])};
        if (mesh.HasTangentsAndBitangents()) {
            result.tangent = placing.direction(mesh.mTangents[index]);
            result.binormal = placing.direction(mesh.mBitangents[index]);
        }
        return result;
    }

    frames_t frames() const {
        if (!mesh.HasNormals())
            return frames_t::none;
        return mesh.HasTangentsAndBitangents() ? frames_t::whole : frames_t::normals;
    }

  private:
    ulk3d::col3a color(std::uint32_t index) const {
        if (!mesh.HasVertexColors(0))
            return surface.color;
        const aiColor4D& c = mesh.mColors[0][index];
        if (!std::isfinite(c.r) || !std::isfinite(c.g) || !std::isfinite(c.b) || !std::isfinite(c.a))
            return surface.color;
        if (!surface.tints_points)
            return {c.r, c.g, c.b, c.a};
        const ulk3d::col3a& tint = surface.color;
        return {c.r * tint.r, c.g * tint.g, c.b * tint.b, c.a * tint.a};
    }

    ulk3d::txc2 coordinate(std::uint32_t index) const {
        if (coordinates == nullptr || !is_finite(coordinates[index]))
            return {};
        return {coordinates[index].x, coordinates[index].y};
    }

    const aiMesh& mesh;
    const placing_t& placing;
    const mesh_surface_t& surface;
    const aiVector3D* coordinates;
};

/// The strips of the triangles whose corners all are kept.
std::vector<std::uint32_t> strips_of(const aiMesh& mesh, const numbering_t& numbering, bool mirrored,
                                     std::uint32_t& left_out) {
    strip_builder_t strips;
    for (const aiFace& face : faces_of(mesh)) {
        corners_t corners{no_vertex, no_vertex, no_vertex};
        if (face.mNumIndices == corners.size())
            std::ranges::transform(std::span(face.mIndices, corners.size()), corners.begin(),
                                   [&](std::uint32_t corner) { return numbering.numbers[corner]; });
        if (mirrored)
            std::swap(corners[1], corners[2]);
        if (std::ranges::find(corners, no_vertex) == corners.end())
            strips.add(corners);
        else
            ++left_out;
    }
    return strips.finish();
}

template <typename Record>
void send(process_output_t& output, const Record& record) {
    output.write(&record, sizeof record);
}

void send_vertices(const vertex_source_t& source, const numbering_t& numbering, process_output_t& output) {
    for (const std::uint32_t vertex : numbering.kept)
        send(output, source.vertex(vertex));
    if (source.frames() == frames_t::none)
        return;
    for (const std::uint32_t vertex : numbering.kept)
        send(output, source.frame(vertex));
}

}  // namespace

std::uint32_t remove_unusable_faces(aiMesh& mesh) {
    std::uint32_t kept = 0;
    mesh.mPrimitiveTypes = 0;
    for (std::uint32_t i = 0; i < mesh.mNumFaces; ++i) {
        aiFace& face = mesh.mFaces[i];
        const std::span corners(face.mIndices, face.mIndices == nullptr ? 0 : face.mNumIndices);
        const bool is_usable =
            mesh.HasPositions() && corners.size() >= 3 &&
            std::ranges::all_of(corners, [&](std::uint32_t c) { return c < mesh.mNumVertices; });
        if (!is_usable)
            continue;
        mesh.mPrimitiveTypes |= corners.size() == 3 ? aiPrimitiveType_TRIANGLE : aiPrimitiveType_POLYGON;
        std::swap(mesh.mFaces[kept].mIndices, face.mIndices);
        std::swap(mesh.mFaces[kept].mNumIndices, face.mNumIndices);
        ++kept;
    }
    return std::exchange(mesh.mNumFaces, kept) - kept;
}

sent_mesh_t send_mesh(const aiMesh& mesh, const aiMatrix4x4& place, const mesh_surface_t& surface,
                      process_output_t& output) {
    sent_mesh_t sent;
    if (!mesh.HasPositions())
        return sent;
    const placing_t placing(place);
    const vertex_source_t source(mesh, placing, surface);
    const numbering_t numbering = number_vertices(mesh, placing, surface);
    const std::vector<std::uint32_t> elements = strips_of(mesh, numbering, placing.mirrors(), sent.left_out);
    if (elements.empty())
        return sent;
    send(output, packet_t::mesh);
    send(output, mesh_head_t{.vertex_count = static_cast<std::uint32_t>(numbering.kept.size()),
                             .element_count = static_cast<std::uint32_t>(elements.size()),
                             .picture_size = static_cast<std::uint32_t>(surface.picture.size()),
                             .frames = source.frames()});
    output.write(surface.picture.data(), surface.picture.size());
    send_vertices(source, numbering, output);
    output.write(elements.data(), elements.size() * sizeof elements[0]);
    sent.is_sent = true;
    return sent;
}

}  // namespace ulktool

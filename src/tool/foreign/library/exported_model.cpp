#include "tool/foreign/library/exported_model.h"

#include <assimp/GltfMaterial.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <span>
#include <vector>

#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"

namespace ulktool {

using ulk3d::vertex_t;

namespace {

bool is_finite(const ulk3d::pos3& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool has_one_color(std::span<const vertex_t> vertices) {
    return std::ranges::all_of(
        vertices, [&](const vertex_t& vertex) { return vertex.color == vertices.front().color; });
}

bool has_opaque_points(std::span<const vertex_t> vertices) {
    return std::ranges::all_of(vertices, [](const vertex_t& vertex) { return vertex.color.a == 1; });
}

bool has_coordinates(std::span<const vertex_t> vertices) {
    return std::ranges::any_of(vertices,
                               [](const vertex_t& vertex) { return vertex.texcoord != ulk3d::txc2{}; });
}

/// The library cuts off what is more than a byte instead of rounding.
float rounded_to_byte(float value) {
    constexpr float steps = 255;
    return std::round(std::clamp(value, 0.0F, 1.0F) * steps) / steps;
}

aiColor4D written_color(const ulk3d::col3a& color, const written_format_t& format) {
    if (format.has_materials)
        return {color.r, color.g, color.b, color.a};
    return {rounded_to_byte(color.r), rounded_to_byte(color.g), rounded_to_byte(color.b),
            rounded_to_byte(color.a)};
}

/// What a mesh has besides positions.
struct content_t {
    bool colors = false, coordinates = false;
};

void fill_vertices(aiMesh& mesh, std::span<const vertex_t> vertices, std::span<const ulk3d::frame_t> frames,
                   const content_t& content, const written_format_t& format) {
    const std::size_t count = vertices.size();
    mesh.mNumVertices = static_cast<unsigned int>(count);
    mesh.mVertices = new aiVector3D[count];
    mesh.mNormals = new aiVector3D[count];
    if (content.colors)
        mesh.mColors[0] = new aiColor4D[count];
    if (content.coordinates) {
        mesh.mTextureCoords[0] = new aiVector3D[count];
        mesh.mNumUVComponents[0] = 2;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const vertex_t& vertex = vertices[i];
        const ulk3d::dir3& normal = frames[i].normal;
        if (is_finite(vertex.position))
            mesh.mVertices[i] = {vertex.position.x, vertex.position.y, vertex.position.z};
        if (std::isfinite(normal.x) && std::isfinite(normal.y) && std::isfinite(normal.z))
            mesh.mNormals[i] = {normal.x, normal.y, normal.z};
        if (content.colors)
            mesh.mColors[0][i] = written_color(vertex.color, format);
        if (content.coordinates && std::isfinite(vertex.texcoord.s) && std::isfinite(vertex.texcoord.t))
            mesh.mTextureCoords[0][i] = {vertex.texcoord.s, vertex.texcoord.t, 0};
    }
}

/// Gives a mesh the triangles of the strips. Returns how many are left out.
std::uint64_t fill_triangles(aiMesh& mesh, std::span<const std::uint32_t> elements,
                             std::span<const vertex_t> vertices) {
    std::uint64_t left_out = 0, count = 0;
    const auto visit_finite = [&](auto&& visit) {
        ulk3d::walk_strips(elements, vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
            const std::array corners{triangle.a, triangle.b, triangle.c};
            if (std::ranges::all_of(corners,
                                    [&](std::uint32_t c) { return is_finite(vertices[c].position); }))
                visit(corners);
            else
                ++left_out;
        });
    };
    visit_finite([&](const auto&) { ++count; });
    left_out = 0;
    mesh.mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    mesh.mFaces = new aiFace[count];
    visit_finite([&](std::array<std::uint32_t, 3> corners) {
        // glTF files of this library say that neighbouring triangles with the same first corner are the parts
        // of one polygon. These are not.
        const aiFace* const before = mesh.mNumFaces > 0 ? &mesh.mFaces[mesh.mNumFaces - 1] : nullptr;
        if (before != nullptr && before->mIndices[0] == corners[0])
            std::rotate(corners.begin(), corners.begin() + 1, corners.end());
        aiFace& face = mesh.mFaces[mesh.mNumFaces++];
        face.mIndices = new unsigned int[3]{corners[0], corners[1], corners[2]};
        face.mNumIndices = 3;
    });
    return left_out;
}

std::unique_ptr<aiMaterial> material_of(const std::string& name, const ulk3d::col3a& color, bool blends,
                                        const std::string& picture) {
    auto material = std::make_unique<aiMaterial>();
    const aiString text(name);
    material->AddProperty(&text, AI_MATKEY_NAME);
    const aiColor4D diffuse(color.r, color.g, color.b, 1);
    material->AddProperty(&diffuse, 1, AI_MATKEY_COLOR_DIFFUSE);
    material->AddProperty(&color.a, 1, AI_MATKEY_OPACITY);
    if (blends) {
        const aiString mode("BLEND");
        material->AddProperty(&mode, AI_MATKEY_GLTF_ALPHAMODE);
    }
    if (!picture.empty()) {
        const aiString path(picture);
        material->AddProperty(&path, AI_MATKEY_TEXTURE_DIFFUSE(0));
    }
    return material;
}

void tell_maps(const ulk3d::texture_t& texture, const std::string& name, const written_format_t& format,
               std::ostream& log) {
    for (const auto& [key, picture] :
         {std::pair{"bumpmap", &texture.bumpmap}, {"specular", &texture.specular}})
        if (!picture->empty())
            log << name << ": " << key << " " << *picture << ", not carried by " << format.name << '\n';
}

}  // namespace

exported_model_t exported_model(const ulk3d::model_entry_t& entry, const std::string& name,
                                const written_format_t& format, bool carries_picture, std::ostream& log) {
    const ulk3d::polygon_t& polygon = entry.polygon;
    exported_model_t model;
    if (polygon.vertex_count() == 0 || polygon.element_count() == 0)
        return model;
    const ulk3d::array_span<const vertex_t> mapped_vertices(polygon.vertices);
    const ulk3d::array_span<const ulk3d::frame_t> frames(polygon.normals);
    const ulk3d::const_index_span elements(polygon.elements);
    const std::span<const vertex_t> vertices = mapped_vertices.span();
    if (vertices.empty() || frames.size() != vertices.size())
        return model;

    auto mesh = std::make_unique<aiMesh>();
    mesh->mName = name;
    const std::uint64_t left_out = fill_triangles(*mesh, elements.span(), vertices);
    if (left_out > 0)
        log << name << ": " << std::to_string(left_out)
            << " triangles with positions that are not finite, left out\n";
    if (mesh->mNumFaces == 0)
        return model;
    const std::string picture = carries_picture ? entry.texture.texture : std::string();
    const bool has_color = format.has_materials && has_one_color(vertices);
    const bool is_opaque = has_opaque_points(vertices);
    const content_t content{.colors = !has_color,
                            .coordinates = !picture.empty() || has_coordinates(vertices)};
    fill_vertices(*mesh, vertices, frames.span(), content, format);
    constexpr ulk3d::col3a white{1, 1, 1, 1};
    model.material =
        material_of("material of " + name, has_color ? vertices.front().color : white, !is_opaque, picture);
    model.mesh = std::move(mesh);

    if (entry.kind == ulk3d::model_kind_t::nurbs)
        log << name << ": NURBS surface, written as the mesh that is drawn\n";
    if (!has_color && !is_opaque && !format.points_have_opacity)
        log << name << ": opacity of points, not carried by " << format.name << '\n';
    tell_maps(entry.texture, name, format, log);
    return model;
}

}  // namespace ulktool

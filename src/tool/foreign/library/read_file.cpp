#include "tool/foreign/library/read_file.h"

#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "tool/foreign/library/mesh_surface.h"
#include "tool/foreign/library/plain_files.h"
#include "tool/foreign/library/scene_packets.h"
#include "tool/foreign/library/send_mesh.h"

namespace ulktool {

namespace {

/// One line of printable text: errors of the library may quote any bytes of the file.
std::string one_line(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, ' ');
    return text;
}

void send_text(process_output_t& output, packet_t kind, const std::string& text) {
    const std::string line = one_line(text);
    const auto size = static_cast<std::uint32_t>(line.size());
    output.write(&kind, sizeof kind);
    output.write(&size, sizeof size);
    output.write(line.data(), line.size());
}

/// "3 THINGS" and "1 THING".
std::string counted(std::uint64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

class file_reader_t {
  public:
    file_reader_t(std::string file_path, process_output_t& to)
        : path(std::move(file_path)), surfaces(path), output(to) {
        importer.SetIOHandler(std::make_unique<plain_files_t>().release());
    }

    void read() {
        const aiScene* const scene = read_triangles();
        if (scene == nullptr || scene->mRootNode == nullptr) {
            fail(importer.GetErrorString());
            return;
        }
        tell_what_is_no_mesh(*scene);
        use_count.resize(scene->mNumMeshes);
        count_uses(*scene->mRootNode);
        send_node(*scene, *scene->mRootNode, aiMatrix4x4());
        if (model_count == 0) {
            fail("the file has no triangles");
            return;
        }
        for (const std::string& line : told)
            send_text(output, packet_t::message, line);
        const packet_t end = packet_t::end;
        output.write(&end, sizeof end);
    }

  private:
    /// The scene with nothing but triangles in its meshes; null after an error of the library.
    const aiScene* read_triangles() {
        const aiScene* const scene = importer.ReadFile(path, 0);
        if (scene == nullptr)
            return nullptr;
        // The library's own step for polygons reads beyond the vertices, or ends the process, where corners
        // do not exist.
        bool has_polygons = false;
        for (std::uint32_t i = 0; i < scene->mNumMeshes; ++i) {
            aiMesh& mesh = *scene->mMeshes[i];
            unusable_count += remove_unusable_faces(mesh);
            has_polygons = has_polygons || (mesh.mPrimitiveTypes & aiPrimitiveType_POLYGON) != 0;
        }
        return has_polygons ? importer.ApplyPostProcessing(aiProcess_Triangulate) : scene;
    }

    void tell(const std::string& text) { told.push_back(text); }

    void fail(const std::string& reason) {
        const bool is_short_of_memory = reason.find("bad_alloc") != std::string::npos;
        send_text(output, packet_t::failure,
                  is_short_of_memory ? "the file does not fit into memory" : reason);
    }

    void tell_what_is_no_mesh(const aiScene& scene) {
        if (unusable_count > 0)
            tell(counted(unusable_count, "face") + " left out: points, lines and corners that do not exist");
        if (scene.HasAnimations())
            tell(counted(scene.mNumAnimations, "animation") + " left out");
        if (scene.HasCameras())
            tell(counted(scene.mNumCameras, "camera") + " left out");
        if (scene.HasLights())
            tell(counted(scene.mNumLights, "light") + " left out");
    }

    static std::span<const std::uint32_t> meshes_of(const aiNode& node) {
        return {node.mMeshes, node.mNumMeshes};
    }

    void count_uses(const aiNode& node) {
        for (const std::uint32_t mesh : meshes_of(node))
            if (mesh < use_count.size())
                ++use_count[mesh];
        for (std::uint32_t i = 0; i < node.mNumChildren; ++i)
            count_uses(*node.mChildren[i]);
    }

    void send_node(const aiScene& scene, const aiNode& node, const aiMatrix4x4& parent) {
        const aiMatrix4x4 place = parent * node.mTransformation;
        for (const std::uint32_t mesh : meshes_of(node))
            if (mesh < use_count.size())
                send_model(scene, mesh, place);
        for (std::uint32_t i = 0; i < node.mNumChildren; ++i)
            send_node(scene, *node.mChildren[i], place);
    }

    void send_model(const aiScene& scene, std::uint32_t index, const aiMatrix4x4& place) {
        const aiMesh& mesh = *scene.mMeshes[index];
        const std::string model = "model " + std::to_string(model_count) + ": ";
        std::vector<std::string> lines;
        const mesh_surface_t surface = surfaces.surface_of(scene, mesh, lines);
        const sent_mesh_t sent = send_mesh(mesh, place, surface, output);
        if (sent.left_out > 0)
            tell((sent.is_sent ? model : std::string()) + counted(sent.left_out, "triangle") +
                 " left out: positions that are not finite");
        if (sent.is_sent) {
            ++model_count;
            for (const std::string& line : lines)
                tell(model + line);
        }
        // What has been sent for the last time makes room for what it becomes.
        if (--use_count[index] == 0)
            const std::unique_ptr<aiMesh> last_use(std::exchange(scene.mMeshes[index], nullptr));
    }

    const std::string path;
    mesh_surfaces_t surfaces;
    process_output_t& output;
    Assimp::Importer importer;
    std::uint64_t unusable_count = 0;
    std::uint64_t model_count = 0;
    std::vector<std::string> told;         ///< what is left out, for a file that loads
    std::vector<std::uint32_t> use_count;  ///< of each mesh, how many nodes have yet to be sent with it
};

}  // namespace

void read_file(const std::string& path, process_output_t& output) {
    try {
        file_reader_t(path, output).read();
    } catch (const std::bad_alloc&) {
        send_text(output, packet_t::failure, "the file does not fit into memory");
    }
}

}  // namespace ulktool

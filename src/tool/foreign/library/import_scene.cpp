#include <memory>
#include <ostream>
#include <string>

#include "model/try_allocate.h"
#include "render/gl/mapped_span.h"
#include "tool/foreign/foreign_scenes.h"
#include "tool/foreign/library/complete_frames.h"
#include "tool/foreign/library/read_file.h"
#include "tool/foreign/library/reader_process.h"
#include "tool/foreign/library/scene_packets.h"
#include "utils/files/file_descriptor.h"
#include "utils/memory/memory_budget.h"
#include "utils/text/paths.h"

namespace ulktool {

namespace {

/// More than any name or message has; a reader that has gone wrong may ask for anything.
constexpr std::uint32_t most_text = 1 << 20;

/// Makes the models that a reader process sends.
class model_receiver_t {
  public:
    model_receiver_t(ulk3d::scene_t& into, const std::string& file_path, std::ostream& messages)
        : scene(into),
          path(file_path),
          log(messages),
          process([&file_path](process_output_t& output) { read_file(file_path, output); }) {}

    bool receive() {
        for (packet_t kind{}; get(kind);) {
            switch (kind) {
                case packet_t::message:
                    if (!pass_line())
                        return fail_for_process();
                    break;
                case packet_t::mesh:
                    if (!receive_mesh())
                        return false;
                    break;
                case packet_t::failure:
                    static_cast<void>(pass_line());
                    return false;
                case packet_t::end:
                    return true;
                default:
                    return fail_for_process();
            }
        }
        return fail_for_process();
    }

  private:
    template <typename Record>
    [[nodiscard]] bool get(Record& record) {
        return process.read(&record, sizeof record);
    }

    /// False when the whole text does not come.
    bool get_text(std::string& text, std::uint32_t size) {
        if (size > most_text)
            return false;
        text.resize(size);
        return process.read(text.data(), size);
    }

    bool pass_line() {
        std::uint32_t size = 0;
        std::string text;
        if (!get(size) || !get_text(text, size))
            return false;
        log << text << '\n';
        return true;
    }

    bool fail_for_process() {
        log << "the reader of " << libutils::view_path(path).extension << " files "
            << (process.took_too_long() ? "took too long" : "crashed") << '\n';
        return false;
    }

    bool fail_for_memory() {
        log << "the file does not fit into memory\n";
        return false;
    }

    bool receive_mesh() {
        mesh_head_t head;
        std::string picture;
        if (!get(head) || !get_text(picture, head.picture_size))
            return fail_for_process();
        ulk3d::model_entry_t& entry =
            *scene.models.emplace_back(std::make_unique<ulk3d::model_entry_t>(ulk3d::model_kind_t::polygon));
        ulk3d::polygon_t& polygon = entry.polygon;
        if (!polygon.can_hold(head.vertex_count, head.element_count) ||
            !ulk3d::try_allocate([&] { return polygon.allocate(head.vertex_count, head.element_count); }))
            return fail_for_memory();
        if (!fill(polygon, head))
            return fail_for_process();
        entry.texture.texture = picture;
        // A picture that can not be read is told on the standard error stream, and the model stays.
        static_cast<void>(entry.texture.open(path.c_str()));
        return polygon.afterload(path.c_str()) || fail_for_memory();
    }

    bool fill(ulk3d::polygon_t& polygon, const mesh_head_t& head) {
        const ulk3d::array_span<ulk3d::vertex_t> vertices(polygon.vertices);
        const ulk3d::array_span<ulk3d::frame_t> frames(polygon.normals);
        const ulk3d::index_span elements(polygon.elements);
        if (vertices.size() != head.vertex_count || frames.size() != head.vertex_count ||
            elements.size() != head.element_count || !get_all(vertices.span()) ||
            (head.frames != frames_t::none && !get_all(frames.span())) || !get_all(elements.span()))
            return false;
        if (head.frames == frames_t::normals)
            complete_frames(vertices.span(), frames.span(), elements.span());
        return true;
    }

    template <typename Record>
    bool get_all(std::span<Record> records) {
        return process.read(records.data(), records.size_bytes());
    }

    ulk3d::scene_t& scene;
    const std::string& path;
    std::ostream& log;
    reader_process_t process;
};

}  // namespace

bool import_scene(ulk3d::scene_t& scene, const std::string& path, std::ostream& log) {
    std::uint64_t size = 0;
    if (!libutils::open_plain_file(path.c_str(), size).is_open()) {
        log << path << ": file open error.\n";
        return false;
    }
    const libutils::load_budget_t budget;
    return model_receiver_t(scene, path, log).receive();
}

}  // namespace ulktool

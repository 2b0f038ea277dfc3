#include "gl/formats/scene/block_reading.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "formats/scene/scene_text.h"
#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/scene_text.h"

namespace ulk_test {

using namespace ulk3d;

namespace {

template <typename Read>
block_reading_t read_block(model_kind_t kind, const std::string& text, Read&& read) {
    block_reading_t reading;
    reading.entry = std::make_unique<model_entry_t>(kind);
    text_lines input(text);
    std::ostringstream log;
    const captured_stream errors(std::cerr);
    text_line_t line = input.next();
    reading.result = read(*reading.entry, reading.counter, line, input, log);
    reading.messages = log.str();
    reading.errors = errors.text();
    reading.last_line = line.view();
    reading.next_line = input.next().view();
    return reading;
}

template <typename Record>
std::vector<Record> records_of(const array_t& array) {
    if (array.element_count() == 0)
        return {};
    const array_span<const Record> records(array);
    return {records.begin(), records.end()};
}

template <typename Write>
std::string written(Write&& write) {
    const temporary_folder_t folder;
    const std::string path = folder.path("block");
    text_output output(path.c_str());
    write(output);
    EXPECT_TRUE(output.complete());
    return read_file(path);
}

}  // namespace

glpolygon_t& surface_programs() {
    static auto* const programs = new glpolygon_t;
    static const bool made = programs->init(nullptr);
    EXPECT_TRUE(made);
    return *programs;
}

block_reading_t read_polygon(const std::string& text) {
    return read_block(model_kind_t::polygon, text,
                      [](auto& entry, auto& counter, auto& line, auto& input, auto& log) {
                          return read_polygon_surface("folder/scene.ulk", entry.texture, entry.polygon,
                                                      counter, line, input, log);
                      });
}

block_reading_t read_nurbs(const std::string& text) {
    return read_block(
        model_kind_t::nurbs, text, [](auto& entry, auto& counter, auto& line, auto& input, auto& log) {
            return read_nurbs_surface("folder/scene.ulk", entry.nurbs, entry.texture, entry.polygon,
                                      surface_programs(), counter, line, input, log);
        });
}

std::string written_polygon(const model_entry_t& entry) {
    return written([&entry](text_output& output) {
        EXPECT_FALSE(write_polygon_surface(entry.texture, entry.polygon, output));
    });
}

std::string written_nurbs(const model_entry_t& entry) {
    return written([&entry](text_output& output) { write_nurbs_surface(entry.nurbs, output); });
}

std::vector<vertex_t> vertices_of(const model_entry_t& entry) {
    return records_of<vertex_t>(entry.polygon.vertices);
}

std::vector<frame_t> frames_of(const model_entry_t& entry) {
    return records_of<frame_t>(entry.polygon.normals);
}

std::vector<std::uint32_t> elements_of(const model_entry_t& entry) {
    if (entry.polygon.elements.element_count() == 0)
        return {};
    const const_index_span elements(entry.polygon.elements);
    return {elements.begin(), elements.end()};
}

std::string lines(const std::vector<std::string>& all) {
    std::string text;
    for (const std::string& line : all)
        text += line + "\n";
    return text;
}

std::string repeated(const std::string& line, std::size_t count) {
    std::string text;
    while (count-- > 0)
        text += line + "\n";
    return text;
}

}  // namespace ulk_test

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/scene.h"
#include "render/models/glpolygon.h"

/// Blocks read from texts and written to texts, with all that there is to see of it.
namespace ulk_test {

/// The view's programs, made at the first call; needs the GL context.
ulk3d::glpolygon_t& surface_programs();

struct block_reading_t {
    std::unique_ptr<ulk3d::model_entry_t> entry;
    bool result = false;
    std::string messages;                   ///< what went to the log
    std::string errors;                     ///< what went to the standard error stream
    std::uint64_t counter = first_counter;  ///< the line counter as the reader left it
    std::string last_line;                  ///< the line that was read last
    std::string next_line;                  ///< the line behind the block

    static constexpr std::uint64_t first_counter = 10;  ///< the number of the opening line
};

/// Reads the block at the start of a text, whose opening line counts as line 10 of "folder/scene.ulk".
block_reading_t read_polygon(const std::string& text);
block_reading_t read_nurbs(const std::string& text);

/// What the writers make of a model.
std::string written_polygon(const ulk3d::model_entry_t& entry);
std::string written_nurbs(const ulk3d::model_entry_t& entry);

std::vector<ulk3d::vertex_t> vertices_of(const ulk3d::model_entry_t& entry);
std::vector<ulk3d::frame_t> frames_of(const ulk3d::model_entry_t& entry);
std::vector<std::uint32_t> elements_of(const ulk3d::model_entry_t& entry);

/// A text of lines, each ended by a line feed.
std::string lines(const std::vector<std::string>& all);

/// The same line again and again.
std::string repeated(const std::string& line, std::size_t count);

}  // namespace ulk_test

#include <array>

#include "formats/scene/block_lines.h"
#include "formats/scene/field_scanner.h"
#include "formats/scene/scene_text.h"
#include "model/environment.h"

namespace ulk3d {

namespace {

struct environment_block {
    static constexpr bool has_arrays = false;
    environment_t& environment;

    bool read_other(const text_line_t&, line_log&) { return false; }
};

void read_cubetex(environment_block& block, std::string_view value) {
    block.environment.cubetex = path_value(value);
}

template <float environment_t::*field>
void read_number(environment_block& block, std::string_view value) {
    block.environment.*field = field_scanner(value.data()).expr();
}

using key = block_key_t<environment_block>;
constexpr std::array environment_keys = {
    key{"cubetex", {}, read_cubetex},
    key{"cubemap", {}, read_cubetex},
    key{"reflectalpha", {}, read_number<&environment_t::reflectalpha>},
    key{"refractalpha", {}, read_number<&environment_t::refractalpha>},
    key{"refractfactor", {}, read_number<&environment_t::refractfactor>},
};
static_assert(is_prefix_free(environment_keys));

}  // namespace

key_names_t environment_key_names() {
    return names_of(environment_keys);
}

bool read_environment(const char* path, environment_t& environment, std::uint64_t& line_counter,
                      text_line_t& line, text_lines& input, std::ostream& log) {
    if (!line.starts_with("begin environment")) {
        put_line(log, "not 'begin environment'.");
        return false;
    }
    line_log messages(log, line_counter);
    environment_block block{environment};
    // The result is ignored: no array can overflow, and the end of the file ends this block as well as "end".
    read_block_lines(environment_keys, block, line, input, messages);
    if (!environment.initex(path)) {
        put_line(log, "environment.initex() failed.");
        return false;
    }
    return true;
}

}  // namespace ulk3d

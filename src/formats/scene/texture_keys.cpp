#include "formats/scene/texture_keys.h"

#include <array>
#include <variant>

#include "formats/scene/field_scanner.h"
#include "formats/scene/key_value.h"
#include "model/texture.h"
#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

using path_field = std::string texture_t::*;
using bool_field = bool texture_t::*;
using expr_field = float texture_t::*;
struct filter_list {};  ///< mipmap, nearlinear and maglinear in one list

struct texture_key_t {
    std::string_view name;
    std::variant<path_field, bool_field, expr_field, filter_list> target;
    /// What follows the line number when the line holds no space.
    std::string_view missing;
    /// The same in a NURBS block where that differs.
    std::string_view missing_in_nurbs = {};
};

/// In the order in which they are tried.
constexpr std::array texture_keys = {
    texture_key_t{"texture", &texture_t::texture, ": texture path is not set. "},
    texture_key_t{"texfilter", filter_list{}, ": texfilter is not set. "},
    texture_key_t{"mipmap", &texture_t::mipmap, ": mipmap is not set. ", ": is_mipmap is not set. "},
    texture_key_t{"nearlinear", &texture_t::nearlinear, ": nearlinear is not set. "},
    texture_key_t{"maglinear", &texture_t::maglinear, ": maglinear is not set. "},
    texture_key_t{"refractfactor", &texture_t::refractfactor, ": refractfactor is not set. "},
    texture_key_t{"aniso", &texture_t::aniso, ": aniso parm is not set. "},
    texture_key_t{"bumptex", &texture_t::bumpmap, ": bumpmap path is not set. "},
    texture_key_t{"bumpmap", &texture_t::bumpmap, ": bumpmap path is not set. "},
    texture_key_t{"bumpofs", &texture_t::bumpofs, ": bumpofs parm is not set. "},
    texture_key_t{"bump2mono", &texture_t::bump2mono, ": bump2mono parm is not set. "},
    texture_key_t{"specular", &texture_t::specular, ": specular path is not set. "},
    texture_key_t{"mercatorsphere", &texture_t::mercatorsphere, ": mercatorsphere parm is not set. "},
};

struct filter_field_t {
    bool texture_t::*target;
    std::string_view missing;  ///< for want of the comma in front of the field
};

constexpr std::array filter_fields = {
    filter_field_t{&texture_t::mipmap, {}},
    filter_field_t{&texture_t::nearlinear, ": nearlinear is not set. "},
    filter_field_t{&texture_t::maglinear, ": maglinear is not set. "},
};

/// What was set before a comma that is missing stays set.
void read_filter_list(std::string_view value, const text_line_t& line, texture_t& texture, line_log& log) {
    for (const filter_field_t& field : filter_fields) {
        if (&field != filter_fields.data()) {
            const std::size_t comma = value.find(',');
            if (comma == std::string_view::npos) {
                log.message(field.missing, line);
                return;
            }
            value.remove_prefix(comma + 1);
        }
        texture.*field.target = libutils::parse_bool(value.data());
    }
}

/// Stores a value in the form that the type of the target asks for.
struct value_reader {
    std::string_view value;
    const text_line_t& line;
    texture_t& texture;
    line_log& log;

    void operator()(path_field path) const { texture.*path = path_value(value); }
    void operator()(bool_field flag) const { texture.*flag = libutils::parse_bool(value.data()); }
    void operator()(expr_field number) const { texture.*number = field_scanner(value.data()).expr(); }
    void operator()(filter_list) const { read_filter_list(value, line, texture, log); }
};

}  // namespace

bool read_texture_key(const text_line_t& line, surface_block_t block, texture_t& texture, line_log& log) {
    for (const texture_key_t& key : texture_keys) {
        if (!line.starts_with(key.name))
            continue;
        const auto value = value_of(line, key.name);
        if (value)
            std::visit(value_reader{*value, line, texture, log}, key.target);
        else if (block == surface_block_t::nurbs && !key.missing_in_nurbs.empty())
            log.message(key.missing_in_nurbs, line);
        else
            log.message(key.missing, line);
        return true;
    }
    return false;
}

}  // namespace ulk3d

#include "formats/scene/shared_keys.h"

#include <algorithm>
#include <array>
#include <variant>

#include "formats/scene/field_scanner.h"
#include "formats/scene/key_names.h"
#include "formats/scene/key_value.h"
#include "formats/scene/scene_text.h"
#include "model/texture.h"
#include "utils/text/numbers.h"

namespace ulk3d {

namespace {

using path_field = std::string texture_t::*;
using bool_field = bool texture_t::*;
using expr_field = float texture_t::*;
struct filter_list {};  ///< mipmap, nearlinear and maglinear in one list

/// When a key is written.
struct saving_t {
    bool is_written;
    path_field beside;  ///< only if this path is not empty; null for always
};
constexpr saving_t always{true, nullptr};
constexpr saving_t never{false, nullptr};
constexpr saving_t beside(path_field path) {
    return {true, path};
}

struct shared_key_t {
    std::string_view name;
    std::variant<path_field, bool_field, expr_field, filter_list> target;
    saving_t saving;
    /// The message, after the line number, for a line without a space.
    std::string_view missing;
    /// The same for a NURBS block where it differs; empty where it does not.
    std::string_view missing_in_nurbs = {};
};

constexpr saving_t with_texture = beside(&texture_t::texture);
constexpr saving_t with_bumpmap = beside(&texture_t::bumpmap);
constexpr saving_t with_specular = beside(&texture_t::specular);

/// In the order in which they are written.
constexpr std::array shared_keys = {
    shared_key_t{"refractfactor", &texture_t::refractfactor, always, ": refractfactor is not set. "},
    shared_key_t{"texture", &texture_t::texture, with_texture, ": texture path is not set. "},
    shared_key_t{"texfilter", filter_list{}, never, ": texfilter is not set. "},
    shared_key_t{"mipmap", &texture_t::mipmap, with_texture, ": mipmap is not set. ",
                 ": is_mipmap is not set. "},
    shared_key_t{"nearlinear", &texture_t::nearlinear, with_texture, ": nearlinear is not set. "},
    shared_key_t{"maglinear", &texture_t::maglinear, with_texture, ": maglinear is not set. "},
    shared_key_t{"aniso", &texture_t::aniso, with_texture, ": aniso parm is not set. "},
    shared_key_t{"bumptex", &texture_t::bumpmap, never, ": bumpmap path is not set. "},
    shared_key_t{"bumpmap", &texture_t::bumpmap, with_bumpmap, ": bumpmap path is not set. "},
    shared_key_t{"bumpofs", &texture_t::bumpofs, with_bumpmap, ": bumpofs parm is not set. "},
    shared_key_t{"bump2mono", &texture_t::bump2mono, with_bumpmap, ": bump2mono parm is not set. "},
    shared_key_t{"specular", &texture_t::specular, with_specular, ": specular path is not set. "},
    shared_key_t{"mercatorsphere", &texture_t::mercatorsphere, always, ": mercatorsphere parm is not set. "},
};

struct filter_field_t {
    bool texture_t::*target;
    std::string_view missing;  ///< the message when the comma before the field is missing
};

constexpr std::array filter_fields = {
    filter_field_t{&texture_t::mipmap, {}},
    filter_field_t{&texture_t::nearlinear, ": nearlinear is not set. "},
    filter_field_t{&texture_t::maglinear, ": maglinear is not set. "},
};

/// The fields before a missing comma keep their new values.
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

/// Parses a value according to the type of its target, and stores it.
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

/// Writes a line with the value of the target.
struct value_writer {
    std::string_view name;
    const texture_t& texture;
    text_output& output;

    void operator()(path_field path) const { output.line(name, ' ', texture.*path); }
    void operator()(bool_field flag) const { output.line(name, texture.*flag ? " true" : " false"); }
    void operator()(expr_field number) const { output.line(name, ' ', texture.*number); }
    void operator()(filter_list) const {}  // its flags are written one by one
};

bool is_saved(const saving_t& saving, const texture_t& texture) {
    return saving.is_written && (saving.beside == nullptr || !(texture.*saving.beside).empty());
}

}  // namespace

bool read_shared_key(const text_line_t& line, surface_block_t block, texture_t& texture, line_log& log) {
    for (const shared_key_t& key : shared_keys) {
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

bool write_texture_keys(const texture_t& texture, text_output& output) {
    for (const shared_key_t& key : shared_keys) {
        if (is_saved(key.saving, texture))
            std::visit(value_writer{key.name, texture, output}, key.target);
    }
    return true;
}

key_names_t shared_key_names() {
    key_names_t names(shared_keys.size());
    std::ranges::transform(shared_keys, names.begin(), &shared_key_t::name);
    return names;
}

}  // namespace ulk3d

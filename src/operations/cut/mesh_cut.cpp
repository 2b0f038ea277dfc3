#include "operations/cut/mesh_cut.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "model/whole_change.h"
#include "operations/cut/walls/cut_walls.h"

namespace ulk3d {
namespace {

struct victim_t {
    const model_entry_t* entry;
    strip_mesh_t mesh;
    bool changed = false;
};

bool has_mesh(const polygon_t& polygon) {
    return polygon.vertex_count() > 0 && polygon.element_count() > 0;
}

const polygon_t* polygon_at(std::uint64_t place, const model_list_t& models) {
    if (place >= models.size())
        return nullptr;
    const model_entry_t& entry = **std::next(models.begin(), static_cast<std::ptrdiff_t>(place));
    return entry.kind == model_kind_t::polygon && has_mesh(entry.polygon) ? &entry.polygon : nullptr;
}

bool fail() {
    std::cerr << "mesh_cut() failed." << std::endl;
    return false;
}

/// False when one of them can not be mapped.
bool read_victims(std::vector<victim_t>& victims, const polygon_t& cutter, const model_list_t& models) {
    for (const auto& entry : models) {
        if (entry->kind != model_kind_t::polygon || &entry->polygon == &cutter || !has_mesh(entry->polygon))
            continue;
        std::optional<strip_mesh_t> mesh = read_strip_mesh(entry->polygon);
        if (!mesh)
            return false;
        victims.push_back({entry.get(), std::move(*mesh)});
    }
    return true;
}

/// Gives the models their new meshes: all of them, or none when one can not be written. Leaves out a model
/// that a handler of the progress has removed from the list.
bool write_back(const std::vector<victim_t>& victims, const model_list_t& models) {
    whole_change_t change;
    for (const victim_t& victim : victims) {
        const auto entry = std::ranges::find(models, victim.entry, &std::unique_ptr<model_entry_t>::get);
        if (!victim.changed || entry == models.end())
            continue;
        model_entry_t* const copy = change.copy_of(**entry);
        if (copy == nullptr || !write_strip_mesh(copy->polygon, victim.mesh))
            return false;
    }
    change.commit();
    return true;
}

void cut_meshes(std::vector<victim_t>& victims, const strip_mesh_t& cutter,
                const progress_signal_t& progress) {
    for (victim_t& victim : victims)
        victim.changed = split_by(victim.mesh, cutter, progress);
    for (victim_t& victim : victims)
        victim.changed = remove_inside(victim.mesh, cutter, progress) || victim.changed;
}

void cut_meshes_with_walls(std::vector<victim_t>& victims, const strip_mesh_t& cutter,
                           const progress_signal_t& progress) {
    std::vector<strip_mesh_t> before;
    for (const victim_t& victim : victims)
        before.push_back(victim.mesh);
    cut_meshes(victims, cutter, progress);
    for (std::size_t n = 0; n < victims.size(); ++n)
        victims[n].changed = add_walls(victims[n].mesh, before[n], cutter, progress) || victims[n].changed;
}

}  // namespace

bool mesh_cut(const progress_signal_t& progress, std::uint64_t current, model_list_t& models,
              openings_t openings) {
    const polygon_t* const current_polygon = polygon_at(current, models);
    if (current_polygon == nullptr)
        return true;
    const std::optional<strip_mesh_t> cutter = read_strip_mesh(*current_polygon);
    std::vector<victim_t> victims;
    if (!cutter || !read_victims(victims, *current_polygon, models))
        return fail();
    if (openings == openings_t::get_walls)
        cut_meshes_with_walls(victims, *cutter, progress);
    else
        cut_meshes(victims, *cutter, progress);
    return write_back(victims, models) || fail();
}

}  // namespace ulk3d

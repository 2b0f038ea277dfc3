#include "operations/cut/mesh_cut.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

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

std::vector<victim_t> read_victims(const polygon_t& cutter, const model_list_t& models) {
    std::vector<victim_t> victims;
    for (const auto& entry : models)
        if (entry->kind == model_kind_t::polygon && &entry->polygon != &cutter && has_mesh(entry->polygon))
            victims.push_back({entry.get(), read_strip_mesh(entry->polygon)});
    return victims;
}

/// Writes a victim back, unless a handler of the progress has removed its model from the list.
void write_back(const victim_t& victim, model_list_t& models) {
    const auto entry = std::ranges::find(models, victim.entry, &std::unique_ptr<model_entry_t>::get);
    if (victim.changed && entry != models.end())
        (void)write_strip_mesh((*entry)->polygon, victim.mesh);  // reports its own failure
}

}  // namespace

void mesh_cut(const progress_signal_t& progress, std::uint64_t current, model_list_t& models) {
    const polygon_t* const current_polygon = polygon_at(current, models);
    if (current_polygon == nullptr)
        return;
    const strip_mesh_t cutter = read_strip_mesh(*current_polygon);
    std::vector<victim_t> victims = read_victims(*current_polygon, models);
    for (victim_t& victim : victims)
        victim.changed = split_by(victim.mesh, cutter, progress);
    for (victim_t& victim : victims)
        victim.changed = remove_inside(victim.mesh, cutter, progress) || victim.changed;
    for (const victim_t& victim : victims)
        write_back(victim, models);
}

}  // namespace ulk3d

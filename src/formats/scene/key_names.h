#pragma once

#include <string_view>
#include <vector>

/// The keys that the readers know, taken from their own tables, so that the description of the file format
/// can be checked against them.
namespace ulk3d {

using key_names_t = std::vector<std::string_view>;

key_names_t environment_key_names();
/// The keys of one kind of surface block, including those of points but not the shared ones.
key_names_t nurbs_key_names();
key_names_t polygon_key_names();
/// The keys of `read_shared_key`.
key_names_t shared_key_names();

}  // namespace ulk3d

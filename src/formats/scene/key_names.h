#pragma once

#include <string_view>
#include <vector>

/// The keys that readers know, from the tables by which they read: for what has to keep up with them, as the
/// description of the file format.
namespace ulk3d {

using key_names_t = std::vector<std::string_view>;

key_names_t environment_key_names();
/// Those of one kind of surface block, with the keys of points and without the shared ones.
key_names_t nurbs_key_names();
key_names_t polygon_key_names();
/// Those of `read_shared_key`.
key_names_t shared_key_names();

}  // namespace ulk3d

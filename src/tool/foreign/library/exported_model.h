#pragma once

#include <assimp/scene.h>

#include <iosfwd>
#include <memory>
#include <string>

#include "model/scene.h"
#include "tool/foreign/library/written_formats.h"

namespace ulktool {

/// A model as the library writes it.
struct exported_model_t {
    std::unique_ptr<aiMesh> mesh;  ///< null when the model has no triangles
    std::unique_ptr<aiMaterial> material;
};

/// Makes one of a model that is called `name`. With `carries_picture` its material has the colour map. Lines
/// about what the format does not carry go to `log`. Points whose positions are not finite lie at the origin,
/// and their triangles are left out.
[[nodiscard]] exported_model_t exported_model(const ulk3d::model_entry_t& entry, const std::string& name,
                                              const written_format_t& format, bool carries_picture,
                                              std::ostream& log);

}  // namespace ulktool

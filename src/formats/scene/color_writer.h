#pragma once

#include "formats/scene/text_output.h"
#include "model/math/records.h"

namespace ulk3d {

/// Writes the "color" lines of a block, only where a point's colour in bytes differs from that of the point
/// before. The first point is compared with `default_color`, which points have without any such line.
class color_writer {
  public:
    color_writer();

    void write(const col3a& color, text_output& output);

  private:
    col3aub current;
};

}  // namespace ulk3d

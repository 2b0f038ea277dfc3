#include "formats/scene/color_writer.h"

#include "formats/scene/point_fields.h"
#include "model/math/colours.h"

namespace ulk3d {

color_writer::color_writer() : current(colour_to_bytes(default_color)) {}

void color_writer::write(const col3a& color, text_output& output) {
    const col3aub bytes = colour_to_bytes(color);
    if (bytes == current)
        return;
    current = bytes;
    output.line("color ", bytes.r, ',', bytes.g, ',', bytes.b, ',', bytes.a);
}

}  // namespace ulk3d

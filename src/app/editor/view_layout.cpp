#include "app/editor/view_layout.h"

namespace ulk3d {

void view_layout_t::resize(int new_width, int new_height) {
    width = new_width;
    height = new_height;
    half_width = static_cast<int>(static_cast<float>(new_width) * 0.5F);
    half_height = static_cast<int>(static_cast<float>(new_height) * 0.5F);
}

}  // namespace ulk3d

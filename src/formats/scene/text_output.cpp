#include "formats/scene/text_output.h"

namespace ulk3d {

bool text_output::flush() {
    if (!broken)
        broken = !write_all(file, buffer.data(), buffer.size());
    buffer.clear();
    return !broken;
}

bool text_output::close() {
    flush();
    if (!file.close())
        broken = true;
    return !broken;
}

}  // namespace ulk3d

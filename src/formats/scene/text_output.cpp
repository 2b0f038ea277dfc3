#include "formats/scene/text_output.h"

namespace ulk3d {

bool text_output::flush() {
    file.write(buffer.data(), buffer.size());
    buffer.clear();
    return !file.failed();
}

bool text_output::complete() {
    flush();
    return file.complete();
}

}  // namespace ulk3d

#include "formats/scene/scene_text.h"
#include "model/environment.h"

namespace ulk3d {

bool write_environment(const environment_t& environment, text_output& output) {
    if (environment.cubetex.empty())
        return false;
    output.line("begin environment");
    output.line("cubetex ", environment.cubetex);
    output.line("reflectalpha ", environment.reflectalpha);
    output.line("refractalpha ", environment.refractalpha);
    output.line("refractfactor ", environment.refractfactor);
    output.line("end");
    return true;
}

}  // namespace ulk3d

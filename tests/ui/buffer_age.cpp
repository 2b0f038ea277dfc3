// Preloaded into the program: says that GL has GLX_EXT_buffer_age and that the back buffer is one frame old, as
// graphics cards do. It is true of the software driver too, which copies its buffer when it swaps.

#include <dlfcn.h>

#include <cstring>

namespace {

constexpr int back_buffer_age = 0x20F4;

using has_extension_t = bool (*)(void* display, int screen, const char* name);
using query_drawable_t = void (*)(void* display, unsigned long drawable, int attribute, unsigned* value);

void query_drawable(void* display, unsigned long drawable, int attribute, unsigned* value) {
    if (attribute == back_buffer_age) {
        *value = 1;
        return;
    }
    const auto real = reinterpret_cast<query_drawable_t>(dlsym(RTLD_NEXT, "glXQueryDrawable"));
    if (real != nullptr)
        real(display, drawable, attribute, value);
}

}  // namespace

// The names by which the toolkit reaches GLX.
extern "C" {
bool epoxy_has_glx_extension(void* display, int screen, const char* name);
extern query_drawable_t epoxy_glXQueryDrawable;

bool epoxy_has_glx_extension(void* display, int screen, const char* name) {
    if (std::strcmp(name, "GLX_EXT_buffer_age") == 0)
        return true;
    const auto real = reinterpret_cast<has_extension_t>(dlsym(RTLD_NEXT, "epoxy_has_glx_extension"));
    return real != nullptr && real(display, screen, name);
}

query_drawable_t epoxy_glXQueryDrawable = query_drawable;
}

#include "render/offscreen/offscreen_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <array>
#include <vector>

#include "render/gl/gl_loader.h"

namespace ulk3d {

namespace {

/// The displays that need no window system: Mesa's surfaceless platform first, then the devices that other
/// drivers offer.
std::vector<EGLDisplay> candidate_displays() {
    std::vector<EGLDisplay> displays;
    displays.push_back(eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));
    const auto query_devices =
        reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    std::array<EGLDeviceEXT, 16> devices{};
    EGLint count = 0;
    if (query_devices != nullptr &&
        query_devices(static_cast<EGLint>(devices.size()), devices.data(), &count) == EGL_TRUE)
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i)
            displays.push_back(eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr));
    return displays;
}

EGLConfig choose_config(EGLDisplay display) {
    constexpr std::array wanted{EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) != EGL_TRUE ||
        eglBindAPI(EGL_OPENGL_API) != EGL_TRUE ||
        eglChooseConfig(display, wanted.data(), &config, 1, &count) != EGL_TRUE || count < 1)
        return nullptr;
    return config;
}

EGLSurface make_surface(EGLDisplay display, EGLConfig config) {
    constexpr std::array wanted{EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
    return eglCreatePbufferSurface(display, config, wanted.data());
}

EGLContext make_core_context(EGLDisplay display, EGLConfig config) {
    constexpr std::array wanted{EGL_CONTEXT_MAJOR_VERSION,
                                3,
                                EGL_CONTEXT_MINOR_VERSION,
                                3,
                                EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                EGL_NONE};
    return eglCreateContext(display, config, EGL_NO_CONTEXT, wanted.data());
}

}  // namespace

offscreen_context_t::~offscreen_context_t() {
    destroy();
}

void offscreen_context_t::destroy() {
    if (context != EGL_NO_CONTEXT) {
        if (eglGetCurrentContext() == context)
            make_none_current();
        eglDestroyContext(display, context);
    }
    if (surface != EGL_NO_SURFACE)
        eglDestroySurface(display, surface);
    context = EGL_NO_CONTEXT;
    surface = EGL_NO_SURFACE;
}

bool offscreen_context_t::create() {
    if (context != EGL_NO_CONTEXT)
        return make_current();
    for (const EGLDisplay candidate : candidate_displays()) {
        const EGLConfig config = choose_config(candidate);
        if (config == nullptr)
            continue;
        display = candidate;
        surface = make_surface(display, config);
        context = make_core_context(display, config);
        if (make_current())
            break;
        destroy();
    }
    if (context == EGL_NO_CONTEXT) {
        message = "no driver gives an OpenGL 3.3 core context without a display.";
        return false;
    }
    if (!load_gl_entry_points()) {
        message = "the OpenGL entry points could not be loaded.";
        destroy();
        return false;
    }
    message.clear();
    return true;
}

bool offscreen_context_t::make_current() const {
    return context != EGL_NO_CONTEXT && eglMakeCurrent(display, surface, surface, context) == EGL_TRUE;
}

void offscreen_context_t::make_none_current() {
    const EGLDisplay current = eglGetCurrentDisplay();
    if (current != EGL_NO_DISPLAY)
        eglMakeCurrent(current, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

}  // namespace ulk3d

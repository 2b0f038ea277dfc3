#include "dialogs/controls/system_text.h"

#include <glib.h>

#include <memory>

namespace ulk3d {

namespace {

struct g_free_t {
    void operator()(char* text) const { g_free(text); }
};
using glib_text = std::unique_ptr<char, g_free_t>;

}  // namespace

Glib::ustring widget_text(const std::string& bytes) {
    const auto length = static_cast<gssize>(bytes.size());
    if (g_utf8_validate(bytes.data(), length, nullptr))
        return bytes;
    glib_text converted(g_locale_to_utf8(bytes.data(), length, nullptr, nullptr, nullptr));
    if (!converted)
        converted.reset(g_utf8_make_valid(bytes.data(), length));
    return converted.get();
}

std::string system_bytes(const Glib::ustring& text) {
    const std::string& bytes = text.raw();
    const glib_text converted(
        g_locale_from_utf8(bytes.data(), static_cast<gssize>(bytes.size()), nullptr, nullptr, nullptr));
    return converted ? converted.get() : bytes;
}

}  // namespace ulk3d

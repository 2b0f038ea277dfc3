#pragma once

#include <glibmm/ustring.h>

#include <string>

namespace ulk3d {

/// Text for a widget from bytes of the system (file names, model names, messages that quote them): unchanged
/// if they are UTF-8, else converted from the locale's encoding, else with replacement characters for what
/// can not be read. Never throws.
Glib::ustring widget_text(const std::string& bytes);

/// The bytes that a text from a widget stands for: in the locale's encoding, else UTF-8. Never throws. Bytes
/// that widget_text could only show as replacement characters are lost: to keep them, compare the text with
/// what was shown and use the original bytes when it has not changed.
std::string system_bytes(const Glib::ustring& text);

}  // namespace ulk3d

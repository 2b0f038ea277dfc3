#pragma once

#include <glibmm/ustring.h>

#include <string>

namespace ulk3d {

/// Text for a widget from bytes of the system (file names, model names, messages that quote them): UTF-8 as
/// it stands, else read in the locale's encoding, else with marks in place of what can not be read. Never
/// throws.
Glib::ustring widget_text(const std::string& bytes);

/// The bytes that a text from a widget stands for: in the locale's encoding, else UTF-8. Never throws. Bytes
/// that widget_text could only show with marks do not come back: who edits text compares it with what was
/// shown.
std::string system_bytes(const Glib::ustring& text);

}  // namespace ulk3d

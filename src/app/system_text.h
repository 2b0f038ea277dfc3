#pragma once

#include <glibmm/ustring.h>

#include <string>

namespace ulk3d {

/// Text for a widget from bytes of the system (file names, model names, messages that quote them): UTF-8 as
/// it stands, else read in the locale's encoding, else with marks in place of what can not be read. Never
/// throws.
Glib::ustring widget_text(const std::string& bytes);

}  // namespace ulk3d

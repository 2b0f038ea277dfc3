#pragma once

#include <ios>
#include <locale>
#include <ostream>

namespace ulk3d {

/// Gives a stream the number format of the debugging forms for as long as this object lives: std::fixed,
/// decimal, and neither grouping nor decimal comma of a locale (the toolkit makes the user's locale the
/// global one of C++, and new streams start with it). The destructor restores flags and locale.
class number_format {
  public:
    explicit number_format(std::ostream& stream) : os(stream), flags(os.flags()), locale(os.getloc()) {
        os.setf(std::ios_base::fixed, std::ios_base::floatfield);
        os.setf(std::ios_base::dec, std::ios_base::basefield);
        set_locale(std::locale::classic());
    }
    ~number_format() {
        os.flags(flags);
        set_locale(locale);
    }
    number_format(const number_format&) = delete;
    number_format& operator=(const number_format&) = delete;

  private:
    void set_locale(const std::locale& wanted) {
        // An imbue flushes a file's buffer, so it is skipped where it would change nothing.
        if (os.getloc() != wanted)
            os.imbue(wanted);
    }

    std::ostream& os;
    std::ios_base::fmtflags flags;
    std::locale locale;
};

}  // namespace ulk3d

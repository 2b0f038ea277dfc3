#pragma once

#include <functional>
#include <string>

#include "support/scene_text.h"

namespace ulk_test {

/// A save over a former file: what it writes, and what may be found in the folder at any time.
class saved_file_t {
  public:
    /// `save(path)` returns whether it has worked.
    saved_file_t(const temporary_folder_t& folder, const std::string& name,
                 std::function<bool(const char* path)> save);

    /// Puts the former file at the path, and nothing beside it.
    void prepare() const;
    bool save() const { return save_to(path.c_str()); }

    /// Looks at what a save has left that was carried out (`worked`), failed, or never came to its end. Empty
    /// when all is as it should be: the new file at the path after one that has worked; otherwise the former
    /// file or the new one, whole, at the path or aside.
    std::string complaint_when(bool worked) const;
    std::string complaint_after_the_end() const;

    const std::string path;

  private:
    bool is_whole(const std::string& file) const;

    std::string folder_path;
    std::function<bool(const char*)> save_to;
    std::string former, expected;
};

}  // namespace ulk_test

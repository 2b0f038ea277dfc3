#pragma once

#include <sys/stat.h>

#include <string>

namespace libutils {

/// The file that stood at a path before a save. Until the new file is whole it lies in the same folder under
/// another name: its own with "~" behind it, or "~1", "~2" and so on when that is taken.
///
/// A file that still lies aside at the end of this object's life stays there, and the line "<path>: not
/// saved; the former file is <other path>" goes to the standard error stream.
class former_file {
  public:
    former_file() = default;
    ~former_file();
    former_file(const former_file&) = delete;
    former_file& operator=(const former_file&) = delete;

    /// Puts the file at `path`, which must not be a symbolic link, aside.
    ///
    /// Leaves in place, and returns true, what can only be written in place: no file at all, what is no plain
    /// file, a file with several hard links, one that may not be written or renamed, one whose name leaves no
    /// room for more. False when the system fails; the file is then untouched and must not be written to.
    [[nodiscard]] bool put_aside(const std::string& path);

    bool is_aside() const { return !other_path.empty(); }

    /// Gives a new file, open for writing, the mode, the owner and the attributes of the former one, as far
    /// as the system lets it. Nobody can read more of it than of the former file.
    void give_rights_to(int descriptor) const;

    /// Gives the file its place back, unless something stands there.
    void put_back();

    /// Removes the file.
    void remove();

  private:
    std::string place, other_path;
    struct stat status {};
};

}  // namespace libutils

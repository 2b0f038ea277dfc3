#pragma once

#include <assimp/IOSystem.hpp>

namespace ulktool {

/// How the library opens files for reading: plain ones alone, as a name in a file of material may lead to a
/// device that has no end. Each is granted time and memory (reader_process.h).
class plain_files_t : public Assimp::IOSystem {
  public:
    bool Exists(const char* path) const override;
    char getOsSeparator() const override { return '/'; }
    /// Null when the file can not be opened, and for any other mode than reading.
    Assimp::IOStream* Open(const char* path, const char* mode) override;
    void Close(Assimp::IOStream* file) override;
};

}  // namespace ulktool

#include "tool/foreign/library/plain_files.h"

#include <unistd.h>

#include <algorithm>
#include <assimp/IOStream.hpp>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <utility>

#include "tool/foreign/library/reader_process.h"
#include "utils/files/file_descriptor.h"
#include "utils/files/picture_files.h"

namespace ulktool {

namespace {

class plain_file_t : public Assimp::IOStream {
  public:
    plain_file_t(libutils::file_descriptor open_file, std::uint64_t file_size)
        : file(std::move(open_file)), size(file_size) {}

    std::size_t Read(void* target, std::size_t record_size, std::size_t count) override {
        if (record_size == 0)
            return 0;
        const std::size_t wanted =
            std::min<std::uint64_t>(count, (size - position) / record_size) * record_size;
        char* const bytes = static_cast<char*>(target);
        std::size_t done = 0;
        while (const std::size_t got = done < wanted ? read_some(file, bytes + done, wanted - done) : 0)
            done += got;
        position += done;
        empty_reads = done == 0 ? empty_reads + 1 : 0;
        if (empty_reads > most_empty_reads)
            throw std::runtime_error("the file ends too early");
        return done / record_size;
    }

    std::size_t Write(const void*, std::size_t, std::size_t) override { return 0; }

    aiReturn Seek(std::size_t offset, aiOrigin origin) override {
        const std::uint64_t base = origin == aiOrigin_SET ? 0 : origin == aiOrigin_CUR ? position : size;
        // Steps backwards come as very large ones.
        const std::uint64_t target = base + offset;
        if (target > size || ::lseek(file.get(), static_cast<off_t>(target), SEEK_SET) < 0)
            return aiReturn_FAILURE;
        position = target;
        return aiReturn_SUCCESS;
    }

    std::size_t Tell() const override { return position; }
    std::size_t FileSize() const override { return size; }
    void Flush() override {}

  private:
    libutils::file_descriptor file;
    std::uint64_t size;
    std::uint64_t position = 0;
    /// Some readers ask again and again for what the file does not have.
    static constexpr int most_empty_reads = 1000;
    int empty_reads = 0;
};

}  // namespace

bool plain_files_t::Exists(const char* path) const {
    return libutils::is_plain_file(path);
}

Assimp::IOStream* plain_files_t::Open(const char* path, const char* mode) {
    if (mode == nullptr || *mode != 'r')
        return nullptr;
    std::uint64_t size = 0;
    libutils::file_descriptor file = libutils::open_plain_file(path, size);
    if (!file.is_open())
        return nullptr;
    reader_process_t::allow_for(size);
    return std::make_unique<plain_file_t>(std::move(file), size).release();
}

void plain_files_t::Close(Assimp::IOStream* file) {
    const std::unique_ptr<Assimp::IOStream> owner(file);
}

}  // namespace ulktool

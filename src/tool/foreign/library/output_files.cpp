#include "tool/foreign/library/output_files.h"

#include <algorithm>
#include <array>
#include <assimp/IOStream.hpp>
#include <list>

#include "utils/files/output_file.h"

namespace ulktool {

namespace {

class made_file_t : public Assimp::IOStream {
  public:
    explicit made_file_t(std::FILE* lent_file) : file(lent_file) {}

    std::size_t Read(void*, std::size_t, std::size_t) override { return 0; }
    std::size_t Write(const void* data, std::size_t record_size, std::size_t count) override {
        return std::fwrite(data, record_size, count, file);
    }
    aiReturn Seek(std::size_t offset, aiOrigin origin) override {
        const int whence = origin == aiOrigin_SET ? SEEK_SET : origin == aiOrigin_CUR ? SEEK_CUR : SEEK_END;
        return std::fseek(file, static_cast<long>(offset), whence) == 0 ? aiReturn_SUCCESS : aiReturn_FAILURE;
    }
    std::size_t Tell() const override { return static_cast<std::size_t>(std::max(0L, std::ftell(file))); }
    std::size_t FileSize() const override { return Tell(); }
    void Flush() override { std::fflush(file); }

  private:
    std::FILE* file;
};

/// Copies all bytes of a file. False when they can not be read.
bool copy(std::FILE* from, libutils::output_file& to) {
    std::array<char, 65536> block;
    std::rewind(from);
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), from))
        to.write(block.data(), size);
    return std::ferror(from) == 0;
}

}  // namespace

output_files_t::output_files_t(const std::string& path)
    : folder(path.substr(0, path.rfind('/') + 1)), main_name(path.substr(folder.size())) {}

Assimp::IOStream* output_files_t::Open(const char* name, const char*) {
    file_t file(std::tmpfile());
    if (!file) {
        is_whole = false;
        return nullptr;
    }
    made.push_back({name, std::move(file)});
    return std::make_unique<made_file_t>(made.back().file.get()).release();
}

void output_files_t::Close(Assimp::IOStream* file) {
    const std::unique_ptr<Assimp::IOStream> owner(file);
}

bool output_files_t::publish() {
    std::stable_partition(made.begin(), made.end(),
                          [this](const made_t& file) { return file.name != main_name; });
    bool all_written = is_whole && !made.empty() && made.back().name == main_name;
    std::list<libutils::output_file> outputs;
    for (const made_t& file : made) {
        if (!all_written)
            break;
        libutils::output_file& output =
            outputs.emplace_back((folder + file.name).c_str(), libutils::fifo_t::needs_reader);
        all_written = std::fflush(file.file.get()) == 0 && std::ferror(file.file.get()) == 0 &&
                      output.is_open() && copy(file.file.get(), output) && !output.failed();
    }
    for (libutils::output_file& output : outputs) {
        all_written = all_written && output.complete();
        if (!all_written)
            output.discard();
    }
    return all_written;
}

}  // namespace ulktool

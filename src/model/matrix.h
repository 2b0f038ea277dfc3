#pragma once

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <vector>

namespace ulk3d {

/// A row-major table in host memory.
template <typename T>
struct matrix_t {
    std::vector<T> data;
    std::uint64_t rows = 0;
    std::uint64_t columns = 0;

    /// Sets new dimensions; all entries become T{}. Throws std::bad_array_new_length, with nothing changed,
    /// when the table is larger than anything that can be allocated.
    void resize(std::uint64_t new_rows, std::uint64_t new_columns) {
        constexpr std::uint64_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T);
        if (new_columns != 0 && new_rows > most / new_columns)
            throw std::bad_array_new_length();
        data.assign(new_rows * new_columns, T{});
        rows = new_rows;
        columns = new_columns;
    }
    void release() { *this = {}; }

    std::span<T> row(std::uint64_t r) { return std::span(data).subspan(r * columns, columns); }
    std::span<const T> row(std::uint64_t r) const { return std::span(data).subspan(r * columns, columns); }
};

/// Compares bit by bit, so that a NaN equals itself.
template <typename T>
bool is_same(const matrix_t<T>& a, const matrix_t<T>& b) {
    return a.rows == b.rows && a.columns == b.columns && a.data.size() == b.data.size() &&
           (a.data.empty() || std::memcmp(a.data.data(), b.data.data(), a.data.size() * sizeof(T)) == 0);
}

}  // namespace ulk3d

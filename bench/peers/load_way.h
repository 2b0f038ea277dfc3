#pragma once

#include <cstdint>

/// A way to load a mesh, and to save what was loaded. Each is a source of its own, and with
/// reports/load_once.cpp a program of its own, so that neither the libraries nor the memory of one are
/// counted with another's. What is loaded lives until the process ends: giving it back is not what is
/// measured.

/// Makes what a program has before it opens its first file.
void prepare_to_load();

/// Loads a file of a kind that this way can read. False when it has not.
[[nodiscard]] bool load_file(const char* path);

/// Saves what was loaded, as a file of a kind that this way can write. False when it has not.
[[nodiscard]] bool save_file(const char* path);

/// Triangles of the mesh that was loaded.
[[nodiscard]] std::uint64_t triangles_loaded();

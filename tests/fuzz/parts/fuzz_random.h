#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// What the mutators of the fuzz targets share.
namespace ulk_test {

/// Changes `size` bytes in place to at most `most`, and returns how many there are then, as libFuzzer's own
/// mutator does.
using byte_mutator_t = std::size_t (*)(std::uint8_t* data, std::size_t size, std::size_t most);

/// Numbers from a seed, the same on every machine. Made as often as inputs are, so its state is one word.
class fuzz_random_t {
  public:
    explicit fuzz_random_t(std::uint64_t seed) : state(seed) {}

    /// The generator SplitMix64: Steele, Lea, Flood, "Fast splittable pseudorandom number generators", 2014.
    std::uint64_t next() {
        std::uint64_t mixed = state += 0x9E3779B97F4A7C15;
        mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
        return mixed ^ mixed >> 31;
    }

    /// Below `limit`, which must not be 0.
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(next() % limit); }
    bool one_in(std::size_t n) { return below(n) == 0; }
    /// A place in a range that is not empty.
    template <class T>
    const T& of(std::span<const T> range) {
        return range[below(range.size())];
    }
    template <class T, std::size_t n>
    const T& of(const T (&range)[n]) {
        return range[below(n)];
    }

  private:
    std::uint64_t state;
};

}  // namespace ulk_test

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "model/nurbs/nurbs_grid.h"
#include "support/captured_stream.h"
#include "support/plain_nurbs.h"

namespace {

/// Small numbers, and now and then a float of any bits, out of the fuzzer's bytes; zeros after their end.
class byte_reader {
  public:
    byte_reader(const std::uint8_t* data, std::size_t size) : next(data), left(size) {}

    std::uint32_t below(std::uint32_t limit) { return byte() % limit; }
    float number() {
        const std::uint32_t kind = byte();
        if (kind < 224)
            return static_cast<float>(kind % 33) / 32;
        std::uint32_t bits = 0;
        for (int n = 0; n < 4; ++n)
            bits = bits << 8 | byte();
        return std::bit_cast<float>(bits);
    }

  private:
    std::uint32_t byte() {
        if (left == 0)
            return 0;
        --left;
        return *next++;
    }
    const std::uint8_t* next;
    std::size_t left;
};

ulk_test::net_t read_net(byte_reader& bytes) {
    const std::uint32_t count1 = bytes.below(6), order1 = bytes.below(6);
    const std::uint32_t count2 = bytes.below(6), order2 = bytes.below(6);
    ulk_test::net_t net(count1, order1, count2, order2);
    const bool same_knots = bytes.below(2) != 0;
    for (auto* table : {&net.knot1, &net.knot2}) {
        for (std::uint64_t row = 0; row < table->rows; ++row) {
            for (std::uint64_t n = 0; n < table->columns; ++n)
                table->row(row)[n] = same_knots && row != 0 ? table->row(0)[n] : bytes.number();
        }
    }
    for (float& weight : net.weight.data)
        weight = bytes.number();
    for (auto& point : net.points.data) {
        ulk_test::seven_floats floats{};
        for (std::size_t n = 0; n < 3; ++n)
            floats[n] = bytes.number();
        point = std::bit_cast<ulk3d::control_point_t>(floats);
    }
    return net;
}

/// Order 0 is not part of the recursion.
float recursive_basis(std::uint64_t i, std::uint64_t order, float t, ulk3d::knot_view_t knots) {
    return order == 0 ? 0 : ulk_test::plain_basis(i, order, t, knots);
}

void require(bool holds) {
    if (!holds)
        std::abort();
}

}  // namespace

/// The grid evaluator gives, with each kernel, what the double loop over plain recursions gives, to the last
/// bit.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    byte_reader bytes(data, size);
    const std::uint32_t resolution1 = bytes.below(7), resolution2 = bytes.below(7);
    const ulk_test::net_t net = read_net(bytes);
    const ulk_test::captured_stream messages(std::cerr);

    std::vector<std::vector<ulk3d::vertex_t>> grids;
    for (const ulk3d::kernel_t& kernel : ulk3d::kernels()) {
        grids.emplace_back(std::size_t{resolution1} * resolution2);
        ulk3d::evaluate_surface(net.view(), resolution1, resolution2, grids.back(), kernel);
    }
    for (std::uint32_t r = 0; r < resolution2; ++r) {
        for (std::uint32_t c = 0; c < resolution1; ++c) {
            const float u = static_cast<float>(c) / static_cast<float>(resolution1 - 1);
            const float v = static_cast<float>(r) / static_cast<float>(resolution2 - 1);
            const auto sums = ulk_test::plain_sums(net, u, v, recursive_basis);
            const auto [position, color] =
                std::fabs(sums[7]) <= 2e-5F ? net.surface(u, v) : ulk_test::plain_mean(sums);
            for (const auto& grid : grids)
                require(
                    ulk_test::same_bits(grid[r * resolution1 + c], ulk3d::vertex_t{position, color, {u, v}}));
        }
    }
    return 0;
}

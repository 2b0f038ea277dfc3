#include "model/nurbs/kernels/kernel.h"

#include <array>

#include "model/nurbs/kernels/kernel_avx2.h"
#include "model/nurbs/kernels/kernel_loops.h"

namespace ulk3d {
namespace {

/// Four floats in one register of the baseline instruction set. Without it, compilers vectorise the sums
/// across terms, with shuffles that cost more than the sums.
using four_floats [[gnu::vector_size(16)]] = float;
using unaligned_four_floats [[gnu::vector_size(16), gnu::aligned(4), gnu::may_alias]] = float;

struct baseline_lanes_t {
    using factors_t = four_floats;
    using numbers_t = four_floats;

    static factors_t load(const float* p) { return *reinterpret_cast<const unaligned_four_floats*>(p); }
    static factors_t repeat(const float* p) { return factors_t{*p, *p, *p, *p}; }
    static factors_t spread(factors_t factors) { return factors; }

    template <std::size_t n>
    void add(factors_t factors, const float* point) {
        const four_floats factor = __builtin_shufflevector(factors, factors, n, n, n, n);
        low += factor * load(point);
        high += factor * load(point + 4);
    }
    void store(float* p) const {
        *reinterpret_cast<unaligned_four_floats*>(p) = low;
        *reinterpret_cast<unaligned_four_floats*>(p + 4) = high;
    }

    static void store_scaled(const float* p, float scale, float last, float* target) {
        const four_floats scaled = load(p + 4) * scale;
        const four_floats lasts{last, last, last, last};
        const four_floats turned = __builtin_shufflevector(scaled, lasts, 2, 2, 4, 4);
        *reinterpret_cast<unaligned_four_floats*>(target) = load(p) * scale;
        *reinterpret_cast<unaligned_four_floats*>(target + 4) =
            __builtin_shufflevector(scaled, turned, 0, 1, 4, 6);
    }

    four_floats low, high;
};

struct kernel_list_t {
    std::array<kernel_t, 2> kernels{
        kernel_t{"baseline", kernel_loops_t<baseline_lanes_t>::sum_terms,
                 kernel_loops_t<baseline_lanes_t>::evaluate_basis,
                 kernel_loops_t<baseline_lanes_t>::make_vertices},
    };
    std::size_t count = 1;

    kernel_list_t() {
        if (const kernel_t* const avx2 = avx2_kernel())
            kernels[count++] = *avx2;
    }
};

}  // namespace

std::span<const kernel_t> kernels() {
    static const kernel_list_t list;
    return std::span(list.kernels).first(list.count);
}

}  // namespace ulk3d

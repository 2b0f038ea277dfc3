#include "model/nurbs/kernels/kernel_avx2.h"

#include "model/nurbs/kernels/kernel_loops.h"

namespace ulk3d {

#ifdef __AVX2__

namespace {

using four_floats [[gnu::vector_size(16)]] = float;
using unaligned_four_floats [[gnu::vector_size(16), gnu::aligned(4), gnu::may_alias]] = float;
using eight_floats [[gnu::vector_size(32)]] = float;
using unaligned_eight_floats [[gnu::vector_size(32), gnu::aligned(4), gnu::may_alias]] = float;

struct avx2_lanes_t {
    using factors_t = four_floats;
    using numbers_t = eight_floats;

    static factors_t load(const float* p) { return *reinterpret_cast<const unaligned_four_floats*>(p); }
    static factors_t repeat(const float* p) { return factors_t{*p, *p, *p, *p}; }
    static eight_floats spread(factors_t factors) {
        return __builtin_shufflevector(factors, factors, 0, 1, 2, 3, 0, 1, 2, 3);
    }

    template <std::size_t n>
    void add(eight_floats factors, const float* point) {
        const eight_floats factor =
            __builtin_shufflevector(factors, factors, n, n, n, n, n + 4, n + 4, n + 4, n + 4);
        sum += factor * *reinterpret_cast<const unaligned_eight_floats*>(point);
    }
    void store(float* p) const { *reinterpret_cast<unaligned_eight_floats*>(p) = sum; }

    static void store_scaled(const float* p, float scale, float last, float* target) {
        const eight_floats scaled = *reinterpret_cast<const unaligned_eight_floats*>(p) * scale;
        const eight_floats lasts{last, last, last, last, last, last, last, last};
        *reinterpret_cast<unaligned_eight_floats*>(target) =
            __builtin_shufflevector(scaled, lasts, 0, 1, 2, 3, 4, 5, 6, 15);
    }

    eight_floats sum;
};

constexpr kernel_t kernel{"avx2", kernel_loops_t<avx2_lanes_t>::sum_terms,
                          kernel_loops_t<avx2_lanes_t>::evaluate_basis,
                          kernel_loops_t<avx2_lanes_t>::make_vertices};

}  // namespace

const kernel_t* avx2_kernel() {
    return __builtin_cpu_supports("avx2") ? &kernel : nullptr;
}

#else

const kernel_t* avx2_kernel() {
    return nullptr;
}

#endif

}  // namespace ulk3d

#include "operations/cut/plane_sides.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace ulk3d {
namespace {

/// Four values at once, where the processor has registers for them.
#ifdef __SSE2__
class four_values_t {
  public:
    four_values_t(const dir3& normal, const float* x, const float* y, const float* z)
        : values(_mm_add_ps(_mm_add_ps(product(normal.x, x), product(normal.y, y)), product(normal.z, z))) {}

    std::uint64_t below(float d) const { return bits(_mm_cmplt_ps(values, _mm_set1_ps(d))); }
    std::uint64_t above(float d) const { return bits(_mm_cmpgt_ps(values, _mm_set1_ps(d))); }

  private:
    static __m128 product(float factor, const float* p) {
        return _mm_mul_ps(_mm_set1_ps(factor), _mm_loadu_ps(p));
    }
    static std::uint64_t bits(__m128 mask) { return static_cast<std::uint64_t>(_mm_movemask_ps(mask)); }

    __m128 values;
};
#else
class four_values_t {
  public:
    four_values_t(const dir3& normal, const float* x, const float* y, const float* z) {
        for (std::size_t k = 0; k < 4; ++k)
            values[k] = normal.x * x[k] + normal.y * y[k] + normal.z * z[k];
    }

    std::uint64_t below(float d) const {
        return bits([d](float v) { return v < d; });
    }
    std::uint64_t above(float d) const {
        return bits([d](float v) { return v > d; });
    }

  private:
    template <typename Test>
    std::uint64_t bits(Test test) const {
        std::uint64_t result = 0;
        for (std::size_t k = 0; k < 4; ++k)
            result |= static_cast<std::uint64_t>(test(values[k])) << k;
        return result;
    }

    std::array<float, 4> values;
};
#endif

}  // namespace

side_bits_t point_sides(const dir3& normal, float d, const float* x, const float* y, const float* z) {
    side_bits_t sides;
    for (std::size_t k = 0; k < 64; k += 4) {
        const four_values_t values(normal, x + k, y + k, z + k);
        sides.below |= values.below(d) << k;
        sides.above |= values.above(d) << k;
    }
    return sides;
}

std::uint64_t boxes_on_both_sides(const dir3& normal, float d, const std::array<const float*, 3>& low,
                                  const std::array<const float*, 3>& high, std::size_t count) {
    std::uint64_t one_side = 0;
    for (std::size_t k = 0; k < count; k += 4) {
        const four_values_t least(normal, low[0] + k, low[1] + k, low[2] + k);
        const four_values_t greatest(normal, high[0] + k, high[1] + k, high[2] + k);
        one_side |= (greatest.below(d) | least.above(d)) << k;
    }
    const std::uint64_t all = count == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
    return all & ~one_side;
}

}  // namespace ulk3d

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <random>

#include "support/plain_image_transforms.h"
#include "utils/pictures/image_transforms.h"

/// Transforms on the way from a picture to a texture: the plain loop over the pixels, row by row, compared
/// with what the program uses. The argument is the side of a square image. The counter `pixels` is pixels per
/// second: the ratio between two rows with the same argument is the speed-up. Targets are reused, so that the
/// figures do not include the system's clearing of new memory. `copy` copies the bytes of an RGB image, which
/// no exchange of its channels can outrun: a larger image does not fit into the processor's caches.
namespace {

using namespace libutils;
namespace format = image_format;

using transform_t = bool (*)(image2d&, const image2d&);

image2d random_image(std::uint32_t code, std::uint32_t side) {
    image2d image;
    image.format = code;
    image.type = image_type::unsigned_integer;
    image.bits = image_bits::bits_8;
    image.width = side;
    image.height = side;
    if (!image.allocate() || !image.palette.allocate(code == format::index ? 256 : 0))
        std::exit(1);
    std::mt19937 random(1);
    for (unsigned char& byte : image.elements())
        byte = static_cast<unsigned char>(random());
    for (std::uint32_t i = 0; i < image.palette.count; ++i)
        image.palette.set(i, static_cast<unsigned char>(random()), static_cast<unsigned char>(random()),
                          static_cast<unsigned char>(random()));
    return image;
}

void run(benchmark::State& state, std::uint32_t code, transform_t transform) {
    const image2d source = random_image(code, static_cast<std::uint32_t>(state.range(0)));
    image2d target;
    for (auto _ : state) {
        if (!transform(target, source))
            std::exit(1);
        benchmark::DoNotOptimize(target.begin());
        benchmark::ClobberMemory();
    }
    state.counters["pixels"] = benchmark::Counter(static_cast<double>(state.range(0) * state.range(0)),
                                                  benchmark::Counter::kIsIterationInvariantRate);
}

template <std::uint32_t code>
bool plain_swap(image2d& target, const image2d& source) {
    ulk_test::plain_swap(target, source, code);
    return true;
}

bool plain_index2rgb(image2d& target, const image2d& source) {
    ulk_test::plain_index2rgb(target, source);
    return true;
}

bool plain_rgb2grey(image2d& target, const image2d& source) {
    ulk_test::plain_rgb2grey(target, source);
    return true;
}

bool plain_heightmap2normalmap(image2d& target, const image2d& source) {
    ulk_test::plain_heightmap2normalmap(target, source);
    return true;
}

bool copy_bytes(image2d& target, const image2d& source) {
    if (target.empty() && !target.image_window_t::allocate(source.size()))
        return false;
    std::memcpy(target.begin(), source.begin(), source.size());
    return true;
}

void sides(benchmark::internal::Benchmark* rows) {
    rows->Arg(128)->Arg(256)->Arg(1024)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(run, copy, format::rgb, copy_bytes)->Apply(sides);
BENCHMARK_CAPTURE(run, rgb2bgr_plain, format::rgb, plain_swap<format::bgr>)->Apply(sides);
BENCHMARK_CAPTURE(run, rgb2bgr, format::rgb, rgb2bgr)->Apply(sides);
BENCHMARK_CAPTURE(run, rgba2bgra_plain, format::rgba, plain_swap<format::bgra>)->Apply(sides);
BENCHMARK_CAPTURE(run, rgba2bgra, format::rgba, rgb2bgr)->Apply(sides);
BENCHMARK_CAPTURE(run, index2rgb_plain, format::index, plain_index2rgb)->Apply(sides);
BENCHMARK_CAPTURE(run, index2rgb, format::index, index2rgb)->Apply(sides);
BENCHMARK_CAPTURE(run, rgb2grey_plain, format::rgb, plain_rgb2grey)->Apply(sides);
BENCHMARK_CAPTURE(run, rgb2grey, format::rgb, rgb2grey)->Apply(sides);
BENCHMARK_CAPTURE(run, heightmap2normalmap_plain, format::grey, plain_heightmap2normalmap)->Apply(sides);
BENCHMARK_CAPTURE(run, heightmap2normalmap, format::grey, heightmap2normalmap)->Apply(sides);

}  // namespace

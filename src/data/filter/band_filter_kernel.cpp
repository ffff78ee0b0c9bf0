#include "data/filter/band_filter_kernel.h"

#include <cassert>

// The same loop is compiled for several instruction sets, and the program chooses when it runs.
#if defined(__GNUC__) && defined(__x86_64__)
#define LUMOPLOT_WIDE_VECTORS
#endif

#if defined(__GNUC__)
#define LUMOPLOT_INLINE [[gnu::always_inline]] inline
#else
#define LUMOPLOT_INLINE inline
#endif

namespace lumoplot {
namespace {

/// Neighbouring outputs are summed up side by side, as many as fit into the vector registers.
template <std::size_t kTile>
LUMOPLOT_INLINE void ConvolveTile(std::span<const double> half, const double* in, double* out) {
    const std::size_t reach = half.size() - 1;
    const double* centre = in + reach;
    double sum[kTile];
    for (std::size_t i = 0; i < kTile; ++i) sum[i] = half[0] * centre[i];
    for (std::size_t m = 1; m <= reach; ++m) {
        const double factor = half[m];
        const double* before = centre - m;
        const double* behind = centre + m;
        for (std::size_t i = 0; i < kTile; ++i) sum[i] += factor * (before[i] + behind[i]);
    }
    for (std::size_t i = 0; i < kTile; ++i) out[i] = sum[i];
}

template <std::size_t kTile>
LUMOPLOT_INLINE void Convolve(std::span<const double> half, std::span<const double> in,
                              std::span<double> out) {
    std::size_t i = 0;
    for (; i + kTile <= out.size(); i += kTile) ConvolveTile<kTile>(half, in.data() + i, out.data() + i);
    for (; i < out.size(); ++i) ConvolveTile<1>(half, in.data() + i, out.data() + i);
}

using TConvolve = void (*)(std::span<const double> half, std::span<const double> in, std::span<double> out);

void ConvolveBaseline(std::span<const double> half, std::span<const double> in, std::span<double> out) {
    Convolve<16>(half, in, out);
}

#if defined(LUMOPLOT_WIDE_VECTORS)
[[gnu::target("avx2")]] void ConvolveAvx2(std::span<const double> half, std::span<const double> in,
                                          std::span<double> out) {
    Convolve<32>(half, in, out);
}

[[gnu::target("avx512f,prefer-vector-width=512")]] void
ConvolveAvx512(std::span<const double> half, std::span<const double> in, std::span<double> out) {
    Convolve<64>(half, in, out);
}

TConvolve ChooseConvolve() {
    if (__builtin_cpu_supports("avx512f")) return ConvolveAvx512;
    if (__builtin_cpu_supports("avx2")) return ConvolveAvx2;
    return ConvolveBaseline;
}
#else
TConvolve ChooseConvolve() {
    return ConvolveBaseline;
}
#endif

} // namespace

void ConvolveSymmetric(std::span<const double> half, std::span<const double> in, std::span<double> out) {
    assert(!half.empty() && in.size() == out.size() + 2 * (half.size() - 1));
    static const TConvolve convolve = ChooseConvolve();
    convolve(half, in, out);
}

} // namespace lumoplot

// Compiled for AVX2 and FMA; runs only where AvailableKernels has found them.
#include "expr/blocks/block_kernels.h"

#if defined(__AVX2__) && defined(__FMA__)
#include "expr/blocks/block_kernels_impl.h"

namespace lumoplot {

const TBlockKernels* Avx2Kernels() {
    static constexpr TBlockKernels kernels =
        MakeKernels<xsimd::fma3<xsimd::avx2>>("AVX2", TVectorFunctions::Use);
    return &kernels;
}

} // namespace lumoplot
#else
namespace lumoplot {

const TBlockKernels* Avx2Kernels() {
    return nullptr;
}

} // namespace lumoplot
#endif

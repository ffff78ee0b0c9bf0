// Compiled for AVX-512 (F, CD, DQ, BW); runs only where AvailableKernels has found them.
#include "expr/blocks/block_kernels.h"

#if defined(__AVX512F__) && defined(__AVX512CD__) && defined(__AVX512DQ__) && defined(__AVX512BW__)
#include "expr/blocks/block_kernels_impl.h"

namespace lumoplot {

const TBlockKernels* Avx512Kernels() {
    static constexpr TBlockKernels kernels = MakeKernels<xsimd::avx512bw>("AVX-512", TVectorFunctions::Use);
    return &kernels;
}

} // namespace lumoplot
#else
namespace lumoplot {

const TBlockKernels* Avx512Kernels() {
    return nullptr;
}

} // namespace lumoplot
#endif

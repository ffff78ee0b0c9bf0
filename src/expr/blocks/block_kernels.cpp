#include "expr/blocks/block_kernels.h"

#include "expr/blocks/block_kernels_impl.h"

namespace lumoplot {
namespace {

#if (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
bool HasAvx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}
bool HasAvx512() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512cd") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
}
#else
bool HasAvx2() {
    return false;
}
bool HasAvx512() {
    return false;
}
#endif

// Two numbers at a time: the scalar functions are faster than the vector library's.
constexpr TBlockKernels kBaselineKernels =
    MakeKernels<xsimd::default_arch>("baseline", TVectorFunctions::LeaveOut);

struct TChoice {
    const TBlockKernels* Kernels[4] = {};

    TChoice() {
        const TBlockKernels** next = Kernels;
        if (Avx512Kernels() && HasAvx512()) *next++ = Avx512Kernels();
        if (Avx2Kernels() && HasAvx2()) *next++ = Avx2Kernels();
        *next = &kBaselineKernels;
    }
};

} // namespace

const TBlockKernels* const* AvailableKernels() {
    static const TChoice choice;
    return choice.Kernels;
}

} // namespace lumoplot

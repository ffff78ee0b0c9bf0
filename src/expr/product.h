// Whole powers by products, in one order for single numbers and for vectors of them.
#pragma once

namespace lumoplot {

/// a to the power N, from 2 to 8.
template <int N, class TNumber>
TNumber Product(TNumber a) {
    if constexpr (N == 2)
        return a * a;
    else if constexpr (N % 2 == 0) {
        const TNumber half = Product<N / 2>(a);
        return half * half;
    } else if constexpr (N == 3)
        return a * a * a;
    else
        return Product<N - 1>(a) * a;
}

} // namespace lumoplot

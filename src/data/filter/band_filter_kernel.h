// The convolution inside the band filter: a symmetric response slides along the samples. Plain arithmetic on
// arrays; it knows neither data sets nor settings.
#pragma once

#include <cstddef>
#include <span>

namespace lumoplot {

/// out[i] = half[0]·in[i + M] + Σ (m = 1 … M) half[m]·(in[i + M − m] + in[i + M + m]), M = half.size() − 1:
/// `half` is the response from its centre on, and `in` holds 2M samples more than `out`. The sum of each
/// output is formed in this order whatever the processor, so that results agree between machines.
void ConvolveSymmetric(std::span<const double> half, std::span<const double> in, std::span<double> out);

} // namespace lumoplot

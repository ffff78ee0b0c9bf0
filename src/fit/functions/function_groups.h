// The parts that the list of ready functions is put together of.
#pragma once

#include "fit/functions/ready_functions.h"

namespace lumoplot {

void AddPeaks(std::vector<TReadyFunction>& functions);
void AddGrowthAndDecay(std::vector<TReadyFunction>& functions);
void AddKineticsAndDoses(std::vector<TReadyFunction>& functions);
void AddWavesAndDistributions(std::vector<TReadyFunction>& functions);
void AddPolynomials(std::vector<TReadyFunction>& functions);

} // namespace lumoplot

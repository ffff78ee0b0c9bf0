// Any bytes are either a function file, which can be compiled, evaluated, fitted and written again, or are
// refused with a message and change nothing.
#include "fit/run/curve_fitter.h"

#include <array>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace lumoplot;

constexpr int kIterations = 5;

void Require(bool condition) {
    if (!condition) std::abort();
}

TBytes Written(const TCurFit& fit) {
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Compact);
    fit.SaveToStream(writer);
    return bytes;
}

bool Load(TCurFit& fit, TBytes bytes) {
    TByteSource source(bytes);
    TxyReader reader(source);
    try {
        fit.LoadFromStream(reader, true);
        return true;
    } catch (const ELumoError&) {
        return false;
    }
}

void Fit(TCurFit& fit) {
    const std::array<double, 8> x = {-3, -1, 0, 0.5, 1, 2, 10, 1e9};
    const std::array<double, 8> y = {1, 0, 2, 3, -1, 1e-9, 1e5, 7};
    fit.SetIterMax(kIterations);
    try {
        RunFit(fit, x, y);
    } catch (const ELumoError&) {
        // What is wrong with the definition is told.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TCurFit fit;
    fit.SetExpression("7*x");
    const TBytes before = Written(fit);
    if (!Load(fit, TBytes(data, data + size))) {
        Require(Written(fit) == before);
        return 0;
    }
    fit.EvaluateAt(0.5);
    fit.SettingsReport();
    TCurFit again;
    Require(Load(again, Written(fit)) && Written(again) == Written(fit));
    Fit(fit);
    return 0;
}

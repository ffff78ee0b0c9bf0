// The kernels for one kind of vector, included by one source file for each instruction set. Everything here
// has internal linkage, and what is instantiated of the vector library carries the instruction set in its
// type, so that the linker never takes one set's code for another's. The exception is the library's reduction
// of huge angles, which the limits below keep from ever being called.
//
// The vector library's functions are within 2 ulp of the scalar ones in the ranges named here (measured over
// each range, and near its ends and its zeros); elements outside are computed one by one.
#pragma once

#include "expr/blocks/block_kernels.h"
#include "expr/product.h"

#include <xsimd/xsimd.hpp>

#include <bit>

namespace lumoplot {
namespace {

enum class TVectorFunctions { Use, LeaveOut };

template <class TArch>
struct TKernelsOf {
    using V = xsimd::batch<double, TArch>;
    using M = typename V::batch_bool_type;
    static constexpr int kWidth = static_cast<int>(V::size);

    static constexpr double kNaN = std::bit_cast<double>(~0ULL);

    static V Truth(const M& holds) { return xsimd::select(holds, V(1.0), V(0.0)); }

    // The operations. Each does on every element what its namesake in scalar_math.h does.
    static V Add(V a, V b) { return a + b; }
    static V Subtract(V a, V b) { return a - b; }
    static V Multiply(V a, V b) { return a * b; }
    static V Divide(V a, V b) { return xsimd::select(b == V(0.0), V(kNaN), a / b); }
    static V Greater(V a, V b) { return Truth(a > b); }
    static V GreaterEqual(V a, V b) { return Truth(a + V(1e-20) >= b); }
    static V LessEqual(V a, V b) { return Truth(b + V(1e-20) >= a); }
    static V Less(V a, V b) { return Truth(a < b); }
    static V NotEqual(V a, V b) { return Truth(xsimd::abs(a - b) > V(1e-30)); }
    static V Equal(V a, V b) { return Truth(xsimd::abs(a - b) <= V(1e-30)); }
    static V Max(V a, V b) { return xsimd::select(a >= b, a, b); }
    static V Min(V a, V b) { return xsimd::select(a <= b, a, b); }

    static V Percent(V a) { return a * V(0.01); }
    static V Negate(V a) { return a * V(-1.0); } // the sign of zero turns, too
    static V Sqr(V a) { return a * a; }
    static V Sqrt(V a) { return xsimd::sqrt(a); }
    static V Abs(V a) { return xsimd::abs(a); }
    static V Round(V a) { return xsimd::nearbyint(a) + V(0.0); }
    static V Trunc(V a) { return xsimd::trunc(a) + V(0.0); }
    static V DegToRad(V a) { return a * V(3.14159265358979323846 / 180); }
    static V RadToDeg(V a) { return a * V(180 / 3.14159265358979323846); }
    static V Sign(V a) { return xsimd::select(a > V(0.0), V(1.0), xsimd::select(a < V(0.0), V(-1.0), a)); }

    // The functions, on the elements within their range.
    static V Exp(V a) { return xsimd::exp(a); }
    static V Ln(V a) { return xsimd::log(a); }
    static V Log10(V a) { return xsimd::log10(a); }
    static V Sin(V a) { return xsimd::sin(a); }
    static V Cos(V a) { return xsimd::cos(a); }
    static V Tan(V a) { return xsimd::tan(a); }
    static V ArcSin(V a) { return xsimd::asin(a); }
    static V ArcCos(V a) { return xsimd::acos(a); }
    static V Sinh(V a) { return xsimd::sinh(a); }
    static V Cosh(V a) { return xsimd::cosh(a); }
    static V Tanh(V a) { return xsimd::tanh(a); }
    static V ArcSinh(V a) { return xsimd::asinh(a); }
    static V ArcCosh(V a) { return xsimd::acosh(a); }
    static V ArcTanh(V a) { return xsimd::atanh(a); }

    static V Load(const double* data) { return V::load_unaligned(data); }

    template <V (*F)(V)>
    static void Unary(double* result, const TBlockOperand* args, int count) {
        const double* a = args[0].Data;
        for (int i = 0; i < count; i += kWidth) F(Load(a + i)).store_unaligned(result + i);
    }

    template <V (*F)(V, V)>
    static void Binary(double* result, const TBlockOperand* args, int count) {
        const double* a = args[0].Data;
        const double* b = args[1].Data;
        if (args[0].Uniform) {
            const V constant(*a);
            for (int i = 0; i < count; i += kWidth) F(constant, Load(b + i)).store_unaligned(result + i);
        } else if (args[1].Uniform) {
            const V constant(*b);
            for (int i = 0; i < count; i += kWidth) F(Load(a + i), constant).store_unaligned(result + i);
        } else {
            for (int i = 0; i < count; i += kWidth) F(Load(a + i), Load(b + i)).store_unaligned(result + i);
        }
    }

    /// For the elements of which `wanted` is false.
    [[gnu::noinline]] static void Patch(TOperation operation, double* result, V a, M wanted) {
        alignas(64) double values[kLanes];
        alignas(64) double inside[kLanes];
        a.store_aligned(values);
        Truth(wanted).store_aligned(inside);
        for (int i = 0; i < kWidth; ++i)
            if (inside[i] == 0) result[i] = Compute(operation, values[i]);
    }

    /// F within [low, high], the scalar function beyond.
    template <TOperation Operation, V (*F)(V), class TLimits>
    static void Guarded(double* result, const TBlockOperand* args, int count) {
        const double* data = args[0].Data;
        for (int i = 0; i < count; i += kWidth) {
            const V a = Load(data + i);
            const M inside = a >= V(TLimits::kLow) && a <= V(TLimits::kHigh);
            if (xsimd::all(inside)) {
                F(a).store_unaligned(result + i);
                continue;
            }
            F(xsimd::select(inside, a, V(TLimits::kSafe))).store_unaligned(result + i);
            Patch(Operation, result + i, a, inside);
        }
    }

    /// Sine and cosine: the vector library's reduction loses digits of what is nearly a multiple of pi/2, so
    /// small results of reduced arguments are computed again.
    template <TOperation Operation, V (*F)(V)>
    static void Periodic(double* result, const TBlockOperand* args, int count) {
        const double* data = args[0].Data;
        for (int i = 0; i < count; i += kWidth) {
            const V a = Load(data + i);
            const V size = xsimd::abs(a);
            const M inside = size <= V(1e4);
            const V value = F(xsimd::select(inside, a, V(0.0)));
            value.store_unaligned(result + i);
            const M exact = size <= V(0.78) || (inside && xsimd::abs(value) > V(1e-3));
            if (!xsimd::all(exact)) Patch(Operation, result + i, a, exact);
        }
    }
};

// Below and above, results are subnormal, infinite or not-a-number, or the vector function is less exact.
// kSafe stands in for the elements outside.
struct TExpLimits {
    static constexpr double kLow = -708, kHigh = 709, kSafe = 0;
};
struct TLnLimits {
    static constexpr double kLow = 2.2250738585072014e-308, kHigh = 1.7976931348623157e308, kSafe = 1;
};
struct TTanLimits {
    static constexpr double kLow = -1.5, kHigh = 1.5, kSafe = 0;
};
struct TUnitLimits {
    static constexpr double kLow = -1, kHigh = 1, kSafe = 0;
};
struct TSinhLimits {
    static constexpr double kLow = -700, kHigh = 700, kSafe = 0;
};
struct TTanhLimits {
    static constexpr double kLow = -1e3, kHigh = 1e3, kSafe = 0;
};
struct TArcSinhLimits {
    static constexpr double kLow = -1e150, kHigh = 1e150, kSafe = 0;
};
struct TArcCoshLimits {
    static constexpr double kLow = 1, kHigh = 1e150, kSafe = 1;
};
struct TArcTanhLimits {
    static constexpr double kLow = -0.9999999999999999, kHigh = 0.9999999999999999, kSafe = 0;
};

template <class TArch>
constexpr TBlockKernels MakeKernels(const char* name, TVectorFunctions functions) {
    using K = TKernelsOf<TArch>;
    TBlockKernels kernels{name, {}};
    const auto set = [&](TOperation operation, TBlockKernel kernel) {
        kernels.Of[static_cast<int>(operation)] = kernel;
    };
#define BINARY(name) set(TOperation::name, &K::template Binary<&K::name>);
#define UNARY(name) set(TOperation::name, &K::template Unary<&K::name>);
#define GUARDED(name, limits) set(TOperation::name, &K::template Guarded<TOperation::name, &K::name, limits>);
#define PERIODIC(name) set(TOperation::name, &K::template Periodic<TOperation::name, &K::name>);
#define PRODUCT(n) set(TOperation::Power##n, &K::template Unary<&Product<n, typename K::V>>);
    BINARY(Add)
    BINARY(Subtract)
    BINARY(Multiply)
    BINARY(Divide)
    BINARY(Greater)
    BINARY(GreaterEqual)
    BINARY(LessEqual)
    BINARY(Less)
    BINARY(NotEqual)
    BINARY(Equal)
    BINARY(Max)
    BINARY(Min)
    UNARY(Percent)
    UNARY(Negate)
    UNARY(Sqr)
    UNARY(Sqrt)
    UNARY(Abs)
    UNARY(Round)
    UNARY(Trunc)
    UNARY(DegToRad)
    UNARY(RadToDeg)
    UNARY(Sign)
    PRODUCT(2)
    PRODUCT(3)
    PRODUCT(4)
    PRODUCT(5)
    PRODUCT(6)
    PRODUCT(7)
    PRODUCT(8)
    if (functions == TVectorFunctions::LeaveOut) return kernels;
    GUARDED(Exp, TExpLimits)
    GUARDED(Ln, TLnLimits)
    GUARDED(Log10, TLnLimits)
    PERIODIC(Sin)
    PERIODIC(Cos)
    GUARDED(Tan, TTanLimits)
    GUARDED(ArcSin, TUnitLimits)
    GUARDED(ArcCos, TUnitLimits)
    GUARDED(Sinh, TSinhLimits)
    GUARDED(Cosh, TSinhLimits)
    GUARDED(Tanh, TTanhLimits)
    GUARDED(ArcSinh, TArcSinhLimits)
    GUARDED(ArcCosh, TArcCoshLimits)
    GUARDED(ArcTanh, TArcTanhLimits)
    return kernels;
#undef BINARY
#undef UNARY
#undef GUARDED
#undef PERIODIC
#undef PRODUCT
}

} // namespace
} // namespace lumoplot

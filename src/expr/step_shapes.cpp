#include "expr/step_shapes.h"

#include "expr/product.h"
#include "expr/scalar_math.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace lumoplot {
namespace {

using enum TOperation;

template <TOperation>
constexpr auto kFunctionOf = nullptr;
#define FUNCTION(name)                                                                                       \
    template <>                                                                                              \
    constexpr auto kFunctionOf<name> = &scalar::name;
FUNCTION(Add)
FUNCTION(Subtract)
FUNCTION(Multiply)
FUNCTION(Divide)
FUNCTION(Negate)
FUNCTION(Exp)
FUNCTION(Ln)
FUNCTION(Log10)
FUNCTION(Sqrt)
FUNCTION(Sqr)
FUNCTION(Abs)
FUNCTION(Sin)
FUNCTION(Cos)
#undef FUNCTION
#define PRODUCT(n)                                                                                           \
    template <>                                                                                              \
    constexpr auto kFunctionOf<Power##n> = &Product<n, double>;
PRODUCT(2)
PRODUCT(3)
PRODUCT(4)
PRODUCT(5)
PRODUCT(6)
PRODUCT(7)
PRODUCT(8)
#undef PRODUCT

/// A leaf of a shape.
struct L {
    static constexpr int kLeaves = 1;
    static constexpr int kNodes = 1;
    static constexpr void Write(TOperation*& nodes) { *nodes++ = kLeaf; }
    template <int First>
    static double Value(const TEvalRecord& record) {
        return *record.Args[First];
    }
};

/// An operation of a shape with one or two operands.
template <TOperation Operation, class TFirst, class TSecond = void>
struct N {
    static constexpr int kLeaves = TFirst::kLeaves + TSecond::kLeaves;
    static constexpr int kNodes = 1 + TFirst::kNodes + TSecond::kNodes;
    static constexpr void Write(TOperation*& nodes) {
        *nodes++ = Operation;
        TFirst::Write(nodes);
        TSecond::Write(nodes);
    }
    template <int First>
    static double Value(const TEvalRecord& record) {
        const double a = TFirst::template Value<First>(record);
        const double b = TSecond::template Value<First + TFirst::kLeaves>(record);
        return kFunctionOf<Operation>(a, b);
    }
};

template <TOperation Operation, class TFirst>
struct N<Operation, TFirst, void> {
    static constexpr int kLeaves = TFirst::kLeaves;
    static constexpr int kNodes = 1 + TFirst::kNodes;
    static constexpr void Write(TOperation*& nodes) {
        *nodes++ = Operation;
        TFirst::Write(nodes);
    }
    template <int First>
    static double Value(const TEvalRecord& record) {
        return kFunctionOf<Operation>(TFirst::template Value<First>(record));
    }
};

template <class TShape>
constexpr auto kNodesOf = [] {
    std::array<TOperation, TShape::kNodes> nodes{};
    TOperation* next = nodes.data();
    TShape::Write(next);
    return nodes;
}();

template <class TShape>
void Step(TEvalRecord& record) {
    static_assert(TShape::kLeaves <= kMaxArguments);
    record.Result = TShape::template Value<0>(record);
}

template <class TShape>
constexpr TStepShape Row() {
    return {kNodesOf<TShape>, &Step<TShape>};
}

using TShapes = std::vector<TStepShape>;

template <TOperation... Operations>
struct TOperations {};

using TArithmetics = TOperations<Add, Subtract, Multiply, Divide>;
using TSums = TOperations<Add, Subtract>;
using TFunctions = TOperations<Exp, Ln, Log10, Sqrt, Sqr, Abs, Sin, Cos, Negate, Power2, Power3, Power4,
                               Power5, Power6, Power7, Power8>;

/// Calls `add` with each operation of the list.
template <TOperation... Operations, class TAdd>
void ForEach(TOperations<Operations...>, TAdd add) {
    (add.template operator()<Operations>(), ...);
}

/// a∘b∘c and sums, products and quotients of two such pairs.
template <TOperation Inner>
void AddArithmetic(TShapes& shapes) {
    using TPair = N<Inner, L, L>;
    ForEach(TArithmetics(), [&]<TOperation Outer>() {
        shapes.push_back(Row<N<Outer, TPair, L>>());
        shapes.push_back(Row<N<Outer, L, TPair>>());
        ForEach(TArithmetics(),
                [&]<TOperation Other>() { shapes.push_back(Row<N<Outer, TPair, N<Other, L, L>>>()); });
        ForEach(TSums(), [&]<TOperation Sum>() {
            shapes.push_back(Row<N<Sum, N<Outer, TPair, L>, L>>());
            shapes.push_back(Row<N<Sum, L, N<Outer, TPair, L>>>());
            shapes.push_back(Row<N<Sum, L, N<Outer, L, TPair>>>());
        });
    });
}

/// f(a), f(a∘b), c∘f(a), f(a)∘c, c∘f(a∘b), d + c*f(a), d + c*f(a∘b).
template <TOperation Function>
void AddFunction(TShapes& shapes) {
    using TSimple = N<Function, L>;
    shapes.push_back(Row<TSimple>());
    shapes.push_back(Row<N<Function, N<Abs, L>>>());
    ForEach(TArithmetics(), [&]<TOperation Outer>() {
        shapes.push_back(Row<N<Outer, L, TSimple>>());
        shapes.push_back(Row<N<Outer, TSimple, L>>());
        shapes.push_back(Row<N<Function, N<Outer, L, L>>>());
        ForEach(TOperations<Add, Subtract, Multiply>(), [&]<TOperation Inner>() {
            shapes.push_back(Row<N<Inner, L, N<Function, N<Outer, L, L>>>>());
        });
    });
    ForEach(TSums(), [&]<TOperation Sum>() {
        shapes.push_back(Row<N<Sum, L, N<Multiply, L, TSimple>>>());
        shapes.push_back(Row<N<Sum, N<Multiply, L, TSimple>, L>>());
        shapes.push_back(Row<N<Sum, L, N<Multiply, L, N<Function, N<Multiply, L, L>>>>>());
    });
}

/// What models of decays, saturations and peaks consist of.
void AddModels(TShapes& shapes) {
    using TDecay = N<Exp, N<Multiply, N<Negate, L>, L>>;
    using TStandardised = N<Divide, N<Subtract, L, L>, L>;
    using TPeak = N<Exp, N<Negate, N<Sqr, TStandardised>>>;
    using TWeightedPeak = N<Exp, N<Multiply, L, N<Sqr, TStandardised>>>;
    shapes.push_back(Row<TDecay>());
    shapes.push_back(Row<N<Multiply, L, TDecay>>());
    shapes.push_back(Row<N<Subtract, L, TDecay>>());
    shapes.push_back(Row<N<Multiply, L, N<Subtract, L, TDecay>>>());
    shapes.push_back(Row<N<Add, L, N<Multiply, L, TDecay>>>());
    shapes.push_back(Row<TPeak>());
    shapes.push_back(Row<N<Multiply, L, TPeak>>());
    shapes.push_back(Row<N<Add, L, N<Multiply, L, TPeak>>>());
    shapes.push_back(Row<TWeightedPeak>());
    shapes.push_back(Row<N<Multiply, L, TWeightedPeak>>());
    shapes.push_back(Row<N<Sqr, TStandardised>>());
    shapes.push_back(Row<N<Power2, TStandardised>>());
}

std::array<TShapes, kOperationCount> MakeTable() {
    TShapes shapes;
    ForEach(TArithmetics(), [&]<TOperation Inner>() { AddArithmetic<Inner>(shapes); });
    ForEach(TFunctions(), [&]<TOperation Function>() { AddFunction<Function>(shapes); });
    AddModels(shapes);
    const auto operations = [](const TStepShape& shape) {
        return std::count_if(shape.Nodes.begin(), shape.Nodes.end(),
                             [](TOperation node) { return node != kLeaf; });
    };
    std::stable_sort(shapes.begin(), shapes.end(),
                     [&](const TStepShape& a, const TStepShape& b) { return operations(a) > operations(b); });
    std::array<TShapes, kOperationCount> table;
    for (const TStepShape& shape : shapes) table[static_cast<std::size_t>(shape.Nodes[0])].push_back(shape);
    return table;
}

} // namespace

std::span<const TStepShape> ShapesOf(TOperation root) {
    static const std::array<TShapes, kOperationCount> table = MakeTable();
    return table[static_cast<std::size_t>(root)];
}

} // namespace lumoplot

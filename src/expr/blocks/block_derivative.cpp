// The rules of differentiation over the graph. Derivatives that are 0 everywhere have no node at all, so a
// factor of 0 never meets an infinity.
#include "expr/blocks/block_graph.h"

#include <numbers>

namespace lumoplot {
namespace {

using enum TOperation;

/// Writes the derivative of one node, given those of its operands.
class TRule {
public:
    TRule(TBlockGraph& graph, TNodeIndex node)
        : m_graph(graph), m_operation(graph.At(node).Operation), m_node(node), m_a(graph.At(node).Args[0]),
          m_b(graph.At(node).Args[1]) {}

    TNodeIndex Apply(TNodeIndex da, TNodeIndex db) {
        if (da == kNoNode && db == kNoNode) return kNoNode;
        if (OperandCount(m_operation) == 2) return OfTwo(da, db);
        return m_operation >= Power2 && m_operation <= Power8 ? OfProduct(da) : OfOne(da);
    }

private:
    TNodeIndex OfOne(TNodeIndex da) {
        switch (m_operation) {
        case Negate:
        case Percent:
        case DegToRad:
        case RadToDeg: return m_graph.Step(m_operation, da);
        case Exp: return Times(m_node, da);
        case Sqr: return Times(Twice(m_a), da);
        case Sqrt: return Over(da, Twice(m_node));
        case Abs: return Times(m_graph.Step(Sign, m_a), da);
        case Ln: return Over(da, m_a);
        case Log10: return Over(da, Times(m_a, m_graph.Constant(std::numbers::ln10)));
        case Sin: return Times(m_graph.Step(Cos, m_a), da);
        case Cos: return m_graph.Step(Negate, Times(m_graph.Step(Sin, m_a), da));
        case Tan: return Times(Plus(One(), m_graph.Step(Sqr, m_node)), da);
        case ArcSin: return Over(da, m_graph.Step(Sqrt, OneMinusSquare()));
        case ArcCos: return m_graph.Step(Negate, Over(da, m_graph.Step(Sqrt, OneMinusSquare())));
        case Sinh: return Times(m_graph.Step(Cosh, m_a), da);
        case Cosh: return Times(m_graph.Step(Sinh, m_a), da);
        case Tanh: return Over(da, m_graph.Step(Sqr, m_graph.Step(Cosh, m_a)));
        case ArcSinh: return Over(da, m_graph.Step(Sqrt, Plus(One(), m_graph.Step(Sqr, m_a))));
        case ArcCosh:
            return Over(da,
                        Times(m_graph.Step(Sqrt, Minus(m_a, One())), m_graph.Step(Sqrt, Plus(m_a, One()))));
        case ArcTanh: return Over(da, OneMinusSquare());
        default: return kNoNode; // steps and truth values are flat
        }
    }

    TNodeIndex OfTwo(TNodeIndex da, TNodeIndex db) {
        switch (m_operation) {
        case Add: return Plus(da, db);
        case Subtract: return Minus(da, db);
        case Multiply: return Plus(Times(da, m_b), Times(m_a, db));
        case Divide: return Over(Minus(da, Times(m_node, db)), m_b);
        case Power:
            return Plus(TimesSlope(PowerSlope, m_a, m_b, da), TimesSlope(ExponentSlope, m_a, m_node, db));
        case IntPower: return TimesSlope(IntPowerSlope, m_a, m_b, da);
        case LogN: {
            const TNodeIndex lnBase = m_graph.Step(Ln, m_a);
            return Minus(Over(db, Times(m_b, lnBase)), Over(Times(m_node, da), Times(m_a, lnBase)));
        }
        case Max: return m_graph.Step(SelectGreaterEqual, m_a, m_b, OrZero(da), OrZero(db));
        case Min: return m_graph.Step(SelectLessEqual, m_a, m_b, OrZero(da), OrZero(db));
        case ArcTan2:
            return Over(Minus(Times(m_b, da), Times(m_a, db)),
                        Plus(m_graph.Step(Sqr, m_a), m_graph.Step(Sqr, m_b)));
        default: return kNoNode;
        }
    }

    TNodeIndex OfProduct(TNodeIndex da) {
        const int exponent = static_cast<int>(m_operation) - static_cast<int>(Power2) + 2;
        if (exponent == 2) return Times(Twice(m_a), da);
        const TNodeIndex lower =
            m_graph.Step(static_cast<TOperation>(static_cast<int>(m_operation) - 1), m_a);
        return Times(Times(m_graph.Constant(exponent), lower), da);
    }

    TNodeIndex TimesSlope(TOperation slope, TNodeIndex x, TNodeIndex y, TNodeIndex factor) {
        return factor == kNoNode ? kNoNode : Times(m_graph.Step(slope, x, y), factor);
    }

    TNodeIndex One() { return m_graph.Constant(1); }
    TNodeIndex Twice(TNodeIndex x) { return Times(m_graph.Constant(2), x); }
    TNodeIndex OneMinusSquare() { return Times(Minus(One(), m_a), Plus(One(), m_a)); }
    TNodeIndex OrZero(TNodeIndex x) { return x == kNoNode ? m_graph.Constant(0) : x; }

    bool IsOne(TNodeIndex x) const {
        return m_graph.At(x).Kind == TNodeKind::Constant && m_graph.At(x).Value == 1;
    }

    TNodeIndex Plus(TNodeIndex x, TNodeIndex y) {
        if (x == kNoNode || y == kNoNode) return x == kNoNode ? y : x;
        return m_graph.Step(Add, x, y);
    }
    TNodeIndex Minus(TNodeIndex x, TNodeIndex y) {
        if (y == kNoNode) return x;
        return x == kNoNode ? m_graph.Step(Negate, y) : m_graph.Step(Subtract, x, y);
    }
    TNodeIndex Times(TNodeIndex x, TNodeIndex y) {
        if (x == kNoNode || y == kNoNode) return kNoNode;
        if (IsOne(x) || IsOne(y)) return IsOne(x) ? y : x;
        return m_graph.Step(Multiply, x, y);
    }
    TNodeIndex Over(TNodeIndex x, TNodeIndex y) {
        return x == kNoNode ? kNoNode : m_graph.Step(Divide, x, y);
    }

    TBlockGraph& m_graph;
    TOperation m_operation;
    TNodeIndex m_node;
    TNodeIndex m_a;
    TNodeIndex m_b;
};

} // namespace

TNodeIndex TBlockGraph::Derivative(const double* variable) {
    if (m_root == kNoNode) return kNoNode;
    std::vector<TNodeIndex> slopes(static_cast<std::size_t>(m_root) + 1, kNoNode);
    const auto slopeOf = [&](TNodeIndex node) {
        return node == kNoNode ? kNoNode : slopes[static_cast<std::size_t>(node)];
    };
    for (TNodeIndex node = 0; node <= m_root; ++node) {
        TNodeIndex slope = kNoNode;
        if (At(node).Kind == TNodeKind::Step)
            slope = TRule(*this, node).Apply(slopeOf(At(node).Args[0]), slopeOf(At(node).Args[1]));
        else if (At(node).Variable == variable && variable)
            slope = Constant(1);
        slopes[static_cast<std::size_t>(node)] = slope;
    }
    return slopeOf(m_root);
}

} // namespace lumoplot

// The language once more, written down from its rules with no regard to speed: token lists are split
// recursively into a tree, and the tree is walked. The parser under test has to agree with it.
#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace lumoplot::tests {

/// A value, and how far another evaluation may be from it whose every operation is off by 2 ulp. Infinite
/// where such a deviation decides between a number and none, or between two branches far from each other.
struct TBounded {
    double Value;
    double Error;
};

/// A formula that has no meaning, with the message that belongs to it.
class TTreeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using TVariables = std::map<std::string, double>;

class TSyntaxTree {
public:
    /// Throws TTreeError.
    explicit TSyntaxTree(const std::string& text);
    ~TSyntaxTree();

    /// Names that are missing from `variables` are not-a-number; assignments write there.
    TBounded Evaluate(TVariables& variables) const;

    struct TNode;

private:
    std::unique_ptr<TNode> m_root;
};

} // namespace lumoplot::tests

// The language once more, written down from its rules with no regard to speed: token lists are split
// recursively into a tree, and the tree is walked. The parser under test has to agree with it.
#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace lumoplot::tests {

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
    double Evaluate(TVariables& variables) const;

    struct TNode;

private:
    std::unique_ptr<TNode> m_root;
};

} // namespace lumoplot::tests

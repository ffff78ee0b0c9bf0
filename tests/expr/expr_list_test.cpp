// The lists of words: ownership, order, duplicates.
#include "expr/expr_list.h"
#include "expr/parser_exception.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class TCountedWord : public TExprWord {
public:
    TCountedWord(std::string_view name, int& alive) : TExprWord(name, nullptr), m_alive(alive) { ++m_alive; }
    ~TCountedWord() override { --m_alive; }

private:
    int& m_alive;
};

std::string NamesOf(const TOCollection& list) {
    std::string names;
    for (const TExprWord* word : list) names += word->Name() + " ";
    return names;
}

TEST(ExprList, TheDictionaryIsSortedAndIgnoresCase) {
    int alive = 0;
    TExpressList list(2);
    int index = -1;
    EXPECT_FALSE(list.Search({nullptr, "x"}, index));
    EXPECT_EQ(index, 0);
    for (const char* name : {"Sin", "b", "SINH", "a", "-@"})
        EXPECT_EQ(list.Insert(std::make_unique<TCountedWord>(name, alive)), nullptr);
    EXPECT_EQ(NamesOf(list), "-@ a b sin sinh ");
    EXPECT_TRUE(list.Search({nullptr, "sIN"}, index));
    EXPECT_EQ(index, 3);
    EXPECT_FALSE(list.Search({nullptr, "si"}, index));
    EXPECT_EQ(index, 3);
    EXPECT_EQ(list.Find("c"), nullptr);
}

TEST(ExprList, AnEqualNameIsRefusedOrReplaces) {
    int alive = 0;
    TExpressList list(2);
    list.Insert(std::make_unique<TCountedWord>("x", alive));
    const TExprWord* first = list.At(0);
    EXPECT_NE(list.Insert(std::make_unique<TCountedWord>("X", alive)), nullptr);
    EXPECT_EQ(list.At(0), first);
    EXPECT_EQ(alive, 1);
    {
        const auto replaced = list.InsertReplacing(std::make_unique<TCountedWord>("X", alive));
        EXPECT_EQ(replaced.get(), first);
        EXPECT_EQ(alive, 2); // the replaced word lives on for those who still point at it
    }
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.InsertReplacing(std::make_unique<TCountedWord>("y", alive)), nullptr);
    EXPECT_EQ(NamesOf(list), "x y ");
}

TEST(ExprList, DuplicatesAreFoundByIdentity) {
    int alive = 0;
    TExpressList list(2);
    list.SetDuplicates(true);
    for (const char* name : {"b", "a", "b", "c", "b"})
        list.Insert(std::make_unique<TCountedWord>(name, alive));
    EXPECT_EQ(NamesOf(list), "a b b b c ");
    for (int i = 0; i < list.Count(); ++i) EXPECT_EQ(list.IndexOf(list.At(i)), i);
    int index = -1;
    EXPECT_TRUE(list.Search({nullptr, "b"}, index));
    EXPECT_EQ(index, 1);
    const TCountedWord stranger("b", alive);
    EXPECT_EQ(list.IndexOf(&stranger), -1);
}

} // namespace
} // namespace lumoplot

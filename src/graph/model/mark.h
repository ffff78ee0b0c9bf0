// Marks: reference figures that a user places on a graph, kept in ascending order of their IDs. The chain
// knows no graph; the graph that owns it redraws and does what the chain's results ask for.
#pragma once

#include "support/look.h"

#include <map>
#include <string>

namespace lumoplot {

enum class TMarkType { VerticalLine = 0, HorizontalLine = 1, Point = 2, Line = 3 };
enum class TMarkDrawing { XAndY = 0, XAndSecondY = 1, None = 2 };

struct TGraphMark {
    int ID = 0; ///< unique within the graph
    double X1 = 0;
    double Y1 = 0;
    double X2 = 0;
    double Y2 = 0;
    TColor Color = kBlack;
    std::string Caption = {};
    TMarkType TypeOfMark = TMarkType::VerticalLine;
    TMarkDrawing WhenDrawn = TMarkDrawing::XAndY;

    bool operator==(const TGraphMark&) const = default;
};

class TMarkChain {
public:
    /// The marks by their IDs, in ascending order.
    const std::map<int, TGraphMark>& Marks() const { return m_marks; }
    int Count() const { return static_cast<int>(m_marks.size()); }
    /// ID of the current mark; 0 for none.
    int CurrentID() const { return m_currentId; }

    /// Stores the mark under its own ID, in place of one that has it.
    void Set(const TGraphMark& mark);
    /// Adds a mark under the smallest free ID from 1; an empty caption becomes the ID's text. Makes it
    /// current.
    int Add(TGraphMark mark);
    /// False when there is no such mark; the current mark is selected anew in both cases.
    bool Delete(int id);
    void Clear() {
        m_marks.clear();
        m_currentId = 0;
    }
    const TGraphMark* Find(int id) const {
        const auto place = m_marks.find(id);
        return place != m_marks.end() ? &place->second : nullptr;
    }
    /// Makes the mark with that ID current; the one with the highest ID when there is none, 0 for no marks.
    void Select(int id) {
        m_currentId = m_marks.contains(id) ? id : m_marks.empty() ? 0 : m_marks.rbegin()->first;
    }
    void SelectNone() { m_currentId = 0; }

private:
    std::map<int, TGraphMark> m_marks;
    int m_currentId = 0;
};

} // namespace lumoplot

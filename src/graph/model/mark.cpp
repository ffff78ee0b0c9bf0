#include "graph/model/mark.h"

namespace lumoplot {

void TMarkChain::Set(const TGraphMark& mark) {
    m_marks[mark.ID] = mark;
}

int TMarkChain::Add(TGraphMark mark) {
    int id = 1;
    for (auto other = m_marks.lower_bound(1); other != m_marks.end() && other->first == id; ++other) ++id;
    mark.ID = id;
    if (mark.Caption.empty()) mark.Caption = std::to_string(id);
    Set(mark);
    m_currentId = id;
    return id;
}

bool TMarkChain::Delete(int id) {
    const bool found = m_marks.erase(id) > 0;
    Select(id);
    return found;
}

} // namespace lumoplot

// Holds back the notifications of an object while it lives. When the outermost hold of the object ends, it
// sends one notification for all that happened meanwhile, if anything did.
#pragma once

namespace lumoplot {

/// `T` counts: BeginUpdate opens a hold and EndUpdate closes the one opened last.
template <class T>
class [[nodiscard]] TUpdateHold {
public:
    explicit TUpdateHold(T& object) : m_object(object) { m_object.BeginUpdate(); }
    ~TUpdateHold() { m_object.EndUpdate(); }
    TUpdateHold(const TUpdateHold&) = delete;
    TUpdateHold& operator=(const TUpdateHold&) = delete;

private:
    T& m_object;
};

} // namespace lumoplot

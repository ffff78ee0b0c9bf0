// The mouse mode that chooses the places of a baseline: a click adds one, a drag moves it, the right button
// takes it away.
#pragma once

#include "graph/mouse/mouse_mode.h"

#include <optional>

namespace lumoplot {

/// Who has the places.
class TPlaceKeeper {
public:
    virtual ~TPlaceKeeper() = default;

    /// The number of the place that is drawn there.
    virtual std::optional<int> PlaceAt(const TPlotMap& map, QPointF at) const = 0;
    virtual int AddPlace(double x, double y) = 0;
    virtual void MovePlace(int place, double x, double y) = 0;
    virtual void RemovePlace(int place) = 0;
};

class TBaselineMode : public TMouseMode {
public:
    explicit TBaselineMode(TPlaceKeeper& keeper) : m_keeper(keeper) {}

    QCursor CursorAt(const TPlotMap& map, QPointF place, bool isDragging) const override;
    bool Press(const TPlotMap& map, const TMouseMoment& moment) override;
    void Drag(const TMouseMoment& moment) override;
    void Release(const TMouseMoment& moment) override;
    void Cancel() override;

private:
    struct TDragState {
        TPlotMap Map; ///< as it was at the press
        int Place;
        bool IsNew;
        QPointF Start;
    };

    TPlaceKeeper& m_keeper;
    std::optional<TDragState> m_drag;
};

} // namespace lumoplot

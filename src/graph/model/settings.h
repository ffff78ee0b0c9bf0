// Base of the settings objects of a graph (axes, dimensions, appearance, legend). A settings object belongs
// to its graph for the graph's whole life; a setter that changes something visible asks the graph to redraw.
#pragma once

#include "support/export.h"
#include "support/font_spec.h"

#include <QObject>
#include <algorithm>
#include <span>
#include <string>

namespace lumoplot {

class TxyGraph;
template <class T>
struct TSectionRow;

class TGraphSettings : public QObject {
    Q_OBJECT

public:
    TxyGraph& Graph() { return m_graph; }
    const TxyGraph& Graph() const { return m_graph; }

protected:
    explicit TGraphSettings(TxyGraph& graph) : m_graph(graph) {}

    XYGRAPH_EXPORT void Redraw();

    /// Stores a value and redraws; does nothing for an equal one. True when it was stored.
    template <class TField, class TValue>
    bool Store(TField& field, const TValue& value) {
        if (field == value) return false;
        field = value;
        Redraw();
        return true;
    }
    /// As Store for a 16-bit unsigned setting: values outside 0 to 65535 take the nearest end.
    bool StoreWord(int& field, int value) { return Store(field, std::clamp(value, 0, 65535)); }
    /// As Store for an enumeration that ends with `last`; other values are ignored.
    template <class TEnum>
    bool StoreEnum(TEnum& field, TEnum value, TEnum last) {
        return static_cast<int>(value) >= 0 && value <= last && Store(field, value);
    }

private:
    TxyGraph& m_graph;
};

enum class TPenStyle { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4 };

/// Whether a picture is shown or goes to paper.
enum class TDrawPurpose { Show, Print };

} // namespace lumoplot

// The slow, literal version of a chain of points: a list that is walked from its start. What the indexed
// chain and the data series are compared with.
#pragma once

#include "data/points/point_chain.h"

#include <algorithm>
#include <cmath>
#include <list>

namespace lumoplot {

class TWalkedChain {
public:
    std::list<TSeriesPoint> Points;
    std::int32_t LastId = 0;

    bool Add(double x, double y, const TMergeRule& rule, double yError = 0) {
        if (!std::isfinite(x)) return false;
        if (Points.empty() || x >= Points.back().X) {
            if (!Points.empty() && !rule.DuplicatesAllowed && x - rule.Tolerance <= Points.back().X)
                Overwrite(Points.back(), x, y, yError);
            else
                Points.push_back({++LastId, x, y, 0, yError});
            return true;
        }
        auto p = Points.begin();
        while (p != Points.end() && !(x - rule.Tolerance <= p->X)) ++p;
        if (p != Points.end() && !rule.DuplicatesAllowed && std::fabs(p->X - x) <= rule.Tolerance)
            Overwrite(*p, x, y, yError);
        else
            Points.insert(p, {++LastId, x, y, 0, yError});
        return true;
    }

    TSeriesPoint* Find(std::int32_t id) {
        const auto found = Locate(id);
        return found == Points.end() ? nullptr : &*found;
    }

    bool Erase(std::int32_t id) {
        const auto found = Locate(id);
        if (found == Points.end()) return false;
        Points.erase(found);
        return true;
    }

    int EraseNeighbours(double tolerance) {
        int erased = 0;
        for (auto p = Points.begin(); p != Points.end();) {
            const auto next = std::next(p);
            if (next != Points.end() && std::fabs(next->X - p->X) <= tolerance) {
                Points.erase(next);
                ++erased;
            } else {
                p = next;
            }
        }
        return erased;
    }

private:
    static void Overwrite(TSeriesPoint& point, double x, double y, double yError) {
        point.X = x;
        point.Y = y;
        point.YError = yError;
    }

    std::list<TSeriesPoint>::iterator Locate(std::int32_t id) {
        return std::find_if(Points.begin(), Points.end(), [id](const TSeriesPoint& p) { return p.Id == id; });
    }
};

} // namespace lumoplot

// The chain of data sets of a graph.
#include "graph/model/graph.h"
#include "support/message_sink.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <utility>

namespace lumoplot {
namespace {

QString SortKey(const TSeries& series) {
    return QString::fromStdString(series.SeriesName()).toCaseFolded();
}

} // namespace

TSeries* TxyGraph::FindSeries(int number) {
    const auto found = Place(number);
    return found != m_series.end() ? found->get() : nullptr;
}

const TSeries* TxyGraph::FindSeries(int number) const {
    const auto found = Place(number);
    return found != m_series.end() ? found->get() : nullptr;
}

// Data sets nearly always lie where their number says.
TxyGraph::TSeriesOwners::const_iterator TxyGraph::Place(int number) const {
    const std::ptrdiff_t place = number - std::ptrdiff_t{1};
    const auto numberOf = [](const auto& series) { return series->SeriesIndex(); };
    const bool isInside = place >= 0 && place < std::ssize(m_series);
    if (isInside && numberOf(m_series[static_cast<std::size_t>(place)]) == number)
        return m_series.begin() + place;
    return number > m_highestNumber ? m_series.end() : std::ranges::find(m_series, number, numberOf);
}

void TxyGraph::Relink() {
    for (std::size_t i = 0; i < m_series.size(); ++i)
        m_series[i]->m_next = i + 1 < m_series.size() ? m_series[i + 1].get() : nullptr;
}

int TxyGraph::AddSeries() {
    return AddSeriesNumbered(m_highestNumber + 1)->SeriesIndex();
}

TSeries* TxyGraph::AddSeriesNumbered(int number) {
    m_series.push_back(std::make_unique<TSeries>(*this, number));
    TSeries* added = m_series.back().get();
    if (m_series.size() > 1) m_series[m_series.size() - 2]->m_next = added;
    m_highestNumber = std::max(m_highestNumber, number);
    NeedRescale();
    Q_EMIT OnNewSeries(added);
    RequestRepaint(true);
    return added;
}

bool TxyGraph::MoveSeriesToFirst(int number) {
    const auto place = Place(number);
    if (place == m_series.end()) return false;
    const auto found = m_series.begin() + (place - m_series.cbegin());
    std::rotate(m_series.begin(), found, found + 1);
    RenumberSeries();
    RequestRepaint(true);
    return true;
}

bool TxyGraph::DeleteSeries(int number) {
    const auto place = Place(number);
    if (place == m_series.end()) return false;
    const auto found = m_series.begin() + (place - m_series.cbegin());
    Q_EMIT OnDeleteSeries(found->get());
    if (m_appearance->XAxisSerIndex() == number) m_appearance->SetXAxisSerIndex(0);
    // Its listeners hear that it goes when the chain is whole again.
    const std::unique_ptr<TSeries> deleted = std::move(*found);
    m_series.erase(found);
    RenumberSeries();
    m_appearance->SetCurrSerIndex(std::min(m_appearance->CurrSerIndex(), SeriesCount()));
    NeedRescale();
    RequestRepaint(true);
    return true;
}

void TxyGraph::RenumberSeries() {
    const TSeries* xSeries = FindSeries(m_appearance->XAxisSerIndex());
    m_highestNumber = 0;
    for (const auto& series : m_series) series->m_seriesIndex = ++m_highestNumber;
    if (xSeries) m_appearance->FollowXAxisSeries(xSeries->SeriesIndex());
    Relink();
}

void TxyGraph::SortSeriesByName() {
    std::ranges::stable_sort(m_series, {}, [](const auto& series) { return SortKey(*series); });
    RenumberSeries();
    m_appearance->SetCurrSerIndex(m_highestNumber);
    RequestRepaint(true);
}

void TxyGraph::ReverseSeries() {
    std::ranges::reverse(m_series);
    RenumberSeries();
    m_appearance->SetCurrSerIndex(m_highestNumber);
    RequestRepaint(true);
}

void TxyGraph::FreeAllSeries() {
    for (const auto& series : m_series) Q_EMIT OnDeleteSeries(series.get());
    const auto deleted = std::exchange(m_series, {});
    m_highestNumber = 0;
    m_appearance->RestoreIndices(0, 0);
    NeedRescale();
    RequestRepaint(true);
}

void TxyGraph::SetBaselineFromMark(int markId, int seriesNumber) {
    TSeries* series = FindSeries(seriesNumber);
    const TGraphMark* mark = m_marks.Find(markId);
    if (!mark || !series) return ShowMessage("No Mark Found!", TMessageKind::Error);
    if (mark->TypeOfMark == TMarkType::HorizontalLine) {
        series->SetBaseline(mark->Y1, 0);
    } else if (mark->TypeOfMark == TMarkType::Line) {
        const double run = mark->X2 - mark->X1;
        const double slope = (mark->Y2 - mark->Y1) / run;
        const double zeroValue = (mark->Y1 * mark->X2 - mark->Y2 * mark->X1) / run;
        if (std::isfinite(slope) && std::isfinite(zeroValue)) return series->SetBaseline(zeroValue, slope);
        ShowMessage("Mark Can Not be a Vertical Line", TMessageKind::Error);
    } else {
        ShowMessage("Mark must be Either Linier or Horizontal", TMessageKind::Error);
    }
}

} // namespace lumoplot

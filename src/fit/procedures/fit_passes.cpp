#include "fit/procedures/fit_passes.h"

#include "expr/blocks/block_graph.h"

#include <algorithm>

namespace lumoplot {

/// The first uses the fit itself, the others have copies, whose variables are their own.
struct TFitPasses::TPlace {
    std::unique_ptr<TCurFit> Copy;
    std::unique_ptr<TFitRows> CopyRows;
    TFitRows* Rows;
    std::vector<double> Residuals;
    std::vector<double> Columns;

    explicit TPlace(TFitRows& rows) : Rows(&rows) {}
    TPlace(const TCurFit& fit, const TFitRows& rows) : Copy(std::make_unique<TCurFit>()) {
        Copy->Assign(&fit);
        std::vector<TDBLParameter*> varied;
        for (const TDBLParameter* parameter : rows.ParametersFrom(0))
            for (int i = 1; i <= fit.NParams(); ++i)
                if (fit.Parameter(i) == parameter) varied.push_back(Copy->Parameter(i));
        CopyRows = std::make_unique<TFitRows>(rows, *Copy, std::move(varied));
        Rows = CopyRows.get();
    }

    void TakeValues(const TCurFit& fit) const {
        for (int i = 1; Copy && i <= fit.NParams(); ++i)
            *Copy->Parameter(i)->ValueRef() = fit.Parameter(i)->Value();
    }
};

TFitPasses::TFitPasses(TCurFit& fit, TFitRows& rows) : m_fit(fit), m_rows(rows) {
}
TFitPasses::~TFitPasses() = default;

// A formula that assigns may carry something from one point to the next.
bool TFitPasses::MayShare() const {
    if (!m_mayShare || PartCount() < 2 || !m_fit.Selected()) return false;
    double* const inputs[] = {m_fit.XRef()};
    const TBlockGraph graph(*m_fit.Selected(), inputs);
    return !graph.IsSequential() && !graph.ForeignWord();
}

void TFitPasses::SetUp() {
    m_places.push_back(std::make_unique<TPlace>(m_rows));
    if (!MayShare() || ProcessorCount() < 2) return;
    m_workers = std::make_unique<TWorkers>(ProcessorCount());
    for (int i = 1; i < m_workers->Count(); ++i) m_places.push_back(std::make_unique<TPlace>(m_fit, m_rows));
}

void TFitPasses::ForEachChunk(std::size_t columns, const std::function<void()>& check,
                              const std::function<void(TFitChunk&)>& work) {
    if (m_places.empty()) SetUp();
    for (const auto& place : m_places) {
        place->TakeValues(m_fit);
        place->Residuals.resize(std::min(kChunk, PointCount()));
        place->Columns.resize(std::max(place->Columns.size(), columns * place->Residuals.size()));
    }
    if (!m_workers) {
        for (std::size_t part = 0; part < PartCount(); ++part)
            DoPart(part, *m_places.front(), columns, check, work);
        return;
    }
    static const std::function<void()> kNoCheck = [] {};
    m_workers->Run(PartCount(), [&](std::size_t part, int worker) {
        DoPart(part, *m_places[static_cast<std::size_t>(worker)], columns, worker == 0 ? check : kNoCheck,
               work);
    });
}

void TFitPasses::DoPart(std::size_t part, TPlace& place, std::size_t columns,
                        const std::function<void()>& check, const std::function<void(TFitChunk&)>& work) {
    const std::size_t end = std::min(PointCount(), (part + 1) * kPart);
    for (std::size_t start = part * kPart; start < end; start += kChunk) {
        check();
        const std::size_t count = std::min(kChunk, end - start);
        TFitChunk chunk{part, start, *place.Rows, std::span(place.Residuals).first(count),
                        std::span(place.Columns).first(columns * count)};
        work(chunk);
    }
}

} // namespace lumoplot

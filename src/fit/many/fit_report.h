// A fit with all that is known of it, for people: sections of tables and sentences, as text or as a page.
#pragma once

#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "fit/many/uncertainty.h"

#include <string>
#include <vector>

namespace lumoplot {

/// A part of the report: sentences, and a table whose first row is its head. Either may be empty.
struct TFitReportSection {
    std::string Heading;
    std::vector<std::string> Sentences;
    std::vector<std::vector<std::string>> Table;
};

/// How the standard errors of a fit that weighs by the errors of the points come about, as a sentence; empty
/// for one that does not.
XYGRAPH_EXPORT std::string ErrorSourceText(const TFitWeighting& weighting);

/// What was fitted to what (`dataName`), how it ended, the parameters with all their figures, their
/// correlations, how good the fit is, and what the residuals say. The fit has run.
std::vector<TFitReportSection> FitReport(const TCurFit& fit, const std::string& dataName);

/// What was worked out of the uncertainty of a fit besides its standard errors; either may be empty.
struct TKnownUncertainty {
    std::vector<TProfile> Profiles; ///< of the varied parameters, in their order
    TBootstrap Bootstrap;

    bool IsEmpty() const { return Profiles.empty() && Bootstrap.Intervals.empty(); }
};

/// The 95 % intervals of the three kinds side by side. The fit has run.
XYGRAPH_EXPORT TFitReportSection UncertaintySection(const TCurFit& fit, const TKnownUncertainty& known);
/// FitReport with that section behind the parameters, unless nothing is known.
XYGRAPH_EXPORT std::vector<TFitReportSection> FitReport(const TCurFit& fit, const std::string& dataName,
                                                        const TKnownUncertainty& known);

/// Columns are aligned by blanks; a table alone can be pasted into a sheet by TableText.
XYGRAPH_EXPORT std::string ReportText(const std::vector<TFitReportSection>& sections);
/// The rows of a table, their cells divided by tabs.
XYGRAPH_EXPORT std::string TableText(const std::vector<std::vector<std::string>>& table);
/// A whole page that needs no other file. `picture` is the address of one, as "data:image/png;base64,…", or
/// empty.
XYGRAPH_EXPORT std::string ReportHtml(const std::string& title,
                                      const std::vector<TFitReportSection>& sections,
                                      const std::string& picture);

} // namespace lumoplot

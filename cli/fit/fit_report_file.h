// The report of a fit as a file.
#pragma once

#include "cli/data_input.h"
#include "fit/many/fit_report.h"

#include <string>

namespace lumoplot {

/// Writes the report of a fit that has run: a page with a picture for .html, a text for .txt. Throws EUsage
/// for another ending, EFileError where it cannot be written.
void WriteFitReport(const std::string& name, const TCurFit& fit, const TDataOptions& data,
                    const TKnownUncertainty& known);
/// Throws EUsage for a name that WriteFitReport does not take.
void CheckReportName(const std::string& name);

} // namespace lumoplot

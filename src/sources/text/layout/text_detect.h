// Finds how a text file is to be read from its first rows. Every reading that the description leaves open is
// tried and scored; the best one is used and the runner-up is kept so that the user can choose it.
#pragma once

#include "sources/text/text_file.h"
#include "sources/text/text_format.h"

#include <optional>
#include <string>

namespace lumoplot {

/// The front of a file as 8-bit text.
struct TTextSample {
    std::string text;
    TTextEncoding encoding = TTextEncoding::Utf8;
    std::optional<std::string> sheet; ///< of a spreadsheet file; its cells are divided by tabs
    bool hasSheetPoint = false;       ///< numbers of the sheet have a decimal point
    bool whole = false;               ///< the text is all of the file
    std::string behind;               ///< rows from places behind the text, in their order
    std::string odd;                  ///< rows that a reading of all the file did not understand
    /// Behind so many rows of numbers in the text that no reading needs more of its front.
    std::size_t enough = std::string::npos;
};

struct TTextReading {
    TTextFormat format;
    /// Between 0 and 1: how much of the rows behind the header rows this reading turns into values. 0 when it
    /// finds none.
    double score = 0;
    /// Why nothing can be loaded so, to stand behind "File NAME "; empty when something can.
    std::string problem;
};

struct TTextReadings {
    TTextReading best;
    std::optional<TTextReading>
        runnerUp; ///< differs in what it reads and turns most rows into values as well
};

/// Reads the front of the file, beyond the header rows of `info`, in the encoding that is wished or else
/// found, and leaves the file restarted at its front. Throws EFileError as TTextFile does, "File NAME: row 1
/// is longer than 4 MB" and "File NAME is no text file: …".
TTextSample TakeSample(TTextFile& file, const TDSInfo& info, const TTextWishes& wishes = {});

/// The readings of the sample. What `info` and `wishes` fix is kept in all of them: separators and header
/// rows of `info` that are set, its columns, its column width, its formats where they are DateTime.
TTextReadings FindTextFormat(const TTextSample& sample, const TDSInfo& info, const TTextWishes& wishes = {});

/// Fixes in `info` and `wishes` what makes FindTextFormat come to that reading: for the choice of the
/// runner-up.
void KeepReading(const TTextFormat& format, TDSInfo& info, TTextWishes& wishes);

} // namespace lumoplot

// Rows of text that come little by little, as points. How they are to be read is found from the first ones,
// as for a file: while only few have come, everything is read again with each new one, from then on only what
// is new.
#pragma once

#include "sources/text/loading/text_loader.h"
#include "sources/text/text_rows.h"

#include <QStringDecoder>
#include <memory>
#include <string_view>

namespace lumoplot {

class TTextPass;

/// Points that a link brings.
struct TFedPoints {
    bool isAnew = false; ///< in the place of all that came before
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> yErrors; ///< empty where no column of them was asked for

    bool IsEmpty() const { return x.empty() && !isAnew; }
};

/// How rows are to be read.
struct TFeedReading {
    TDSInfo info;
    TTextWishes wishes;
    TFormulaTexts formulas;

    bool operator==(const TFeedReading& other) const;
};

class TRowFeed {
public:
    /// From so many rows on their reading is settled.
    static constexpr int kSettledRows = 100;
    /// A line that is longer, or a text that holds no numbers up to there, is none to follow.
    static constexpr std::size_t kMostHeld = std::size_t{1} << 20;

    explicit TRowFeed(TFeedReading reading);
    ~TRowFeed();

    /// Takes bytes as they come, cut anywhere.
    void Add(std::string_view bytes);
    /// A line that has not ended will not go on.
    void Cut();
    /// Forgets all that came.
    void Restart();
    /// Reads the rows that are whole, with `end` File the last one, too, and appends to `points`. Throws
    /// EFileError "no row with numbers has come in the first …" and "row … is longer than …", and then
    /// forgets what it holds.
    void Take(TTextEnd end, TFedPoints& points);

    /// What became of the rows so far.
    const TTextReport& Report() const { return m_report; }
    bool IsSettled() const { return m_isSettled; }

private:
    TRowFeed& operator=(TRowFeed&&);

    void Decode(std::string_view bytes);
    std::size_t WholeRows(TTextEnd end) const;
    std::size_t BehindWholeRow() const;
    void ReadAgain(std::size_t length, TFedPoints& points);
    void ReadOn(std::string_view rows, TFedPoints& points);
    int Frequency() const;

    TFeedReading m_reading;
    std::string m_start;                    ///< bytes, while too few have come to know the encoding
    std::unique_ptr<QStringDecoder> m_wide; ///< of UTF-16
    bool m_hasStarted = false;
    std::string m_text; ///< all that came, or once the reading is settled the line that has not ended
    bool m_isSettled = false;
    std::size_t m_readLength = 0; ///< of the text, when it was looked at last
    std::size_t m_waitFor = 0;    ///< so much more of it before it is looked at again
    bool m_isChanged = false;     ///< since the last Take
    TTextReport m_report;
    std::unique_ptr<TRowFormulas> m_formulas;
    std::unique_ptr<TTextPass> m_pass;
};

} // namespace lumoplot

// Many copies of one small shape, one above the other, collected as what each pixel still lets through.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <cstdint>
#include <span>
#include <vector>

namespace lumoplot {

/// What the pixels of a small picture let through, 0 (nothing) to 256 (all), cut to those that are not
/// transparent, in rows padded to a multiple of kStep.
class TStampMask {
public:
    static constexpr std::size_t kStep = 16; ///< pixels that a processor takes at once

    explicit TStampMask(const QImage& stamp);

    /// Where the mask lies in the picture.
    QPoint Offset() const { return m_place.topLeft(); }
    std::size_t Width() const { return static_cast<std::size_t>(m_place.width()); }
    std::size_t Height() const { return m_rows.size() / m_stride; }
    std::size_t Stride() const { return m_stride; }
    const std::uint16_t* Row(std::size_t y) const { return m_rows.data() + y * m_stride; }

    /// Neighbouring pixels of a row that let nothing through.
    struct TRun {
        std::size_t Row;
        std::size_t First;
        std::size_t Length;
    };
    /// The longest of each row that has any, the shortest first.
    const std::vector<TRun>& WholeRuns() const { return m_wholeRuns; }

private:
    void FindWholeRuns();

    QRect m_place;
    std::size_t m_stride;
    std::vector<std::uint16_t> m_rows;
    std::vector<TRun> m_wholeRuns;
};

/// Where a mask that is taken would change nothing; nowhere at first.
class TCoveredPlaces {
public:
    /// The 64 places of a row from x on, a bit each.
    std::uint64_t From(std::int64_t x, std::int64_t y) const {
        if (m_words.empty()) return 0;
        const auto column = static_cast<std::size_t>(x + m_offset.x());
        const std::size_t word = static_cast<std::size_t>(y + m_offset.y()) * m_stride + column / 64;
        const std::size_t shift = column % 64;
        if (shift == 0 || word + 1 == m_words.size()) return m_words[word] >> shift;
        return m_words[word] >> shift | m_words[word + 1] << (64 - shift);
    }

private:
    friend class TCoverage;

    // Leave the places that are the first of so many in a row, or in a column.
    void KeepRunsAcross(std::size_t length);
    void KeepRunsDown(std::size_t length);

    QPoint m_offset;
    std::size_t m_stride = 0; ///< words in a row
    std::vector<std::uint64_t> m_words;
};

class TCoverage {
public:
    TCoverage(std::int64_t width, std::int64_t height);

    /// Covers the pixels under the mask for a picture with its top left corner at that place; all of the
    /// picture must lie inside.
    void Take(const TStampMask& mask, std::int64_t x, std::int64_t y);
    /// Of pictures at all places of a row, given as bits, covers what the mask covers whole, at once.
    void TakeWholeRuns(const TStampMask& mask, std::span<const std::uint64_t> places, std::int64_t y);
    /// Ends the rows of TakeWholeRuns.
    void CoverWholeRuns();
    /// The places where Take would change nothing that can be seen.
    TCoveredPlaces PlacesCovered(const TStampMask& mask) const;
    /// Draws what is covered in that colour; the painter's units are pixels.
    void Draw(QPainter& painter, QPointF corner, const QColor& color) const;

private:
    std::int64_t m_width;
    std::int64_t m_height;
    std::int64_t m_stride;
    std::int64_t m_top; ///< first and last row that is covered
    std::int64_t m_bottom = -1;
    std::vector<std::uint64_t> m_whole; ///< a bit each, for CoverWholeRuns
    std::vector<std::uint8_t> m_clear;  ///< 255 where nothing was taken, 0 where nothing shines through
};

} // namespace lumoplot

#include "graph/drawing/lines/coverage.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lumoplot {
namespace {

constexpr std::size_t kStep = TStampMask::kStep;

constexpr std::int64_t kWord = 64;

// A bit for each of 64 bytes: whether it is small enough not to be seen.
std::uint64_t HiddenBits(const std::uint8_t* clear) {
    constexpr std::uint64_t kSeen = 0x7c7c7c7c7c7c7c7c; // carries into the highest bit from 4 on
    constexpr std::uint64_t kHigh = 0x8080808080808080;
    constexpr std::uint64_t kGather = 0x0102040810204080;
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) {
        std::uint64_t eight;
        std::memcpy(&eight, clear + 8 * i, 8);
        const std::uint64_t seen = (((eight & ~kHigh) + kSeen) | eight) & kHigh;
        const std::uint64_t hidden = (seen ^ kHigh) >> 7;
        bits |= (hidden * kGather >> 56) << (8 * i);
    }
    return bits;
}

// A byte for each of 8 bits, 255 where it is set.
std::uint64_t BytesOfBits(std::uint8_t bits) {
    static const auto table = [] {
        std::array<std::uint64_t, 256> bytes{};
        for (std::size_t i = 0; i < bytes.size(); ++i)
            for (std::size_t bit = 0; bit < 8; ++bit)
                if (i >> bit & 1) bytes[i] |= std::uint64_t(255) << (8 * bit);
        return bytes;
    }();
    return table[bits];
}

QRect InkOf(const QImage& picture) {
    QRect ink(0, 0, 1, 1);
    bool isFirst = true;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) == 0) continue;
            ink = isFirst ? QRect(x, y, 1, 1) : ink | QRect(x, y, 1, 1);
            isFirst = false;
        }
    return ink;
}

// Written so that the compiler sees sixteen pixels that nothing else touches.
void LetThrough(std::uint8_t* target, const std::uint16_t* mask) {
    std::array<std::uint8_t, kStep> clear;
    std::array<std::uint16_t, kStep> part;
    std::memcpy(clear.data(), target, kStep);
    std::memcpy(part.data(), mask, kStep * sizeof(std::uint16_t));
    for (std::size_t i = 0; i < kStep; ++i)
        clear[i] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(clear[i] * part[i]) >> 8);
    std::memcpy(target, clear.data(), kStep);
}

// Colours of a picture with premultiplied opacity, by coverage.
std::array<QRgb, 256> ShadesOf(const QColor& color) {
    std::array<QRgb, 256> shades;
    for (int i = 0; i < 256; ++i)
        shades[static_cast<std::size_t>(i)] =
            qPremultiply(qRgba(color.red(), color.green(), color.blue(), i));
    return shades;
}

} // namespace

TStampMask::TStampMask(const QImage& stamp)
    : m_place(InkOf(stamp)),
      m_stride((static_cast<std::size_t>(m_place.width()) + kStep - 1) / kStep * kStep),
      m_rows(m_stride * static_cast<std::size_t>(m_place.height()), 256) {
    for (int y = 0; y < m_place.height(); ++y)
        for (int x = 0; x < m_place.width(); ++x) {
            const int clear = 255 - qAlpha(stamp.pixel(m_place.topLeft() + QPoint(x, y)));
            m_rows[static_cast<std::size_t>(y) * m_stride + static_cast<std::size_t>(x)] =
                static_cast<std::uint16_t>(clear + (clear >> 7));
        }
    FindWholeRuns();
}

void TStampMask::FindWholeRuns() {
    for (std::size_t y = 0; y < Height(); ++y) {
        TRun longest{y, 0, 0};
        for (std::size_t x = 0; x < Width(); ++x) {
            std::size_t end = x;
            while (end < Width() && Row(y)[end] == 0) ++end;
            if (end - x > longest.Length) longest = {y, x, end - x};
            x = std::max(x, end);
        }
        if (longest.Length > 0) m_wholeRuns.push_back(longest);
    }
    std::ranges::sort(m_wholeRuns, {}, &TRun::Length);
}

TCoverage::TCoverage(std::int64_t width, std::int64_t height)
    : m_width(width), m_height(height),
      m_stride((width + 4 * static_cast<std::int64_t>(kStep) + kWord - 1) / kWord * kWord), m_top(height),
      m_clear(static_cast<std::size_t>(m_stride * height), 255) {
}

void TCoverage::Take(const TStampMask& mask, std::int64_t x, std::int64_t y) {
    x += mask.Offset().x();
    y += mask.Offset().y();
    const auto height = static_cast<std::int64_t>(mask.Height());
    m_top = std::min(m_top, y);
    m_bottom = std::max(m_bottom, y + height - 1);
    std::uint8_t* target = m_clear.data() + y * m_stride + x;
    for (std::size_t row = 0; row < mask.Height(); ++row, target += m_stride)
        for (std::size_t start = 0; start < mask.Stride(); start += kStep)
            LetThrough(target + start, mask.Row(row) + start);
}

void TCoverage::TakeWholeRuns(const TStampMask& mask, std::span<const std::uint64_t> places, std::int64_t y) {
    const auto stride = static_cast<std::size_t>(m_stride / kWord);
    m_whole.resize(stride * static_cast<std::size_t>(m_height));
    std::vector<std::uint64_t> line(places.begin(), places.end()); // each place and those behind it
    line.resize(stride);
    std::size_t length = 1;
    for (const TStampMask::TRun& run : mask.WholeRuns()) {
        while (length < run.Length) {
            const std::size_t shift = std::min({length, run.Length - length, std::size_t(63)});
            for (std::size_t i = stride; i-- > 1;) line[i] |= line[i] << shift | line[i - 1] >> (64 - shift);
            line[0] |= line[0] << shift;
            length += shift;
        }
        const auto row = static_cast<std::size_t>(y + mask.Offset().y()) + run.Row;
        std::uint64_t* target = m_whole.data() + row * stride;
        const std::size_t right = static_cast<std::size_t>(mask.Offset().x()) + run.First;
        const std::size_t words = right / 64, shift = right % 64;
        for (std::size_t i = 0; i + words < stride; ++i) {
            target[i + words] |= line[i] << shift;
            if (shift > 0 && i + words + 1 < stride) target[i + words + 1] |= line[i] >> (64 - shift);
        }
    }
}

void TCoverage::CoverWholeRuns() {
    for (std::size_t i = 0; i < m_whole.size(); ++i) {
        if (m_whole[i] == 0) continue;
        const auto row = static_cast<std::int64_t>(i) / (m_stride / kWord);
        m_top = std::min(m_top, row);
        m_bottom = std::max(m_bottom, row);
        std::uint8_t* clear = m_clear.data() + i * static_cast<std::size_t>(kWord);
        for (int byte = 0; byte < 8; ++byte) {
            std::uint64_t eight;
            std::memcpy(&eight, clear + 8 * byte, 8);
            eight &= ~BytesOfBits(static_cast<std::uint8_t>(m_whole[i] >> (8 * byte)));
            std::memcpy(clear + 8 * byte, &eight, 8);
        }
    }
    m_whole.clear();
}

void TCoveredPlaces::KeepRunsAcross(std::size_t length) {
    for (std::size_t kept = 1; kept < length;) {
        const std::size_t shift = std::min({kept, length - kept, std::size_t(63)});
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            const bool isLast = (i + 1) % m_stride == 0;
            const std::uint64_t next = isLast ? 0 : m_words[i + 1];
            m_words[i] &= m_words[i] >> shift | next << (64 - shift);
        }
        kept += shift;
    }
}

void TCoveredPlaces::KeepRunsDown(std::size_t length) {
    for (std::size_t kept = 1; kept < length;) {
        const std::size_t shift = std::min(kept, length - kept) * m_stride;
        for (std::size_t i = 0; i < m_words.size(); ++i)
            m_words[i] &= i + shift < m_words.size() ? m_words[i + shift] : 0;
        kept += shift / m_stride;
    }
}

TCoveredPlaces TCoverage::PlacesCovered(const TStampMask& mask) const {
    TCoveredPlaces places;
    places.m_offset = mask.Offset();
    places.m_stride = static_cast<std::size_t>(m_stride / kWord);
    places.m_words.resize(m_clear.size() / static_cast<std::size_t>(kWord));
    for (std::size_t i = 0; i < places.m_words.size(); ++i)
        places.m_words[i] = HiddenBits(m_clear.data() + i * static_cast<std::size_t>(kWord));
    places.KeepRunsAcross(mask.Width());
    places.KeepRunsDown(mask.Height());
    return places;
}

void TCoverage::Draw(QPainter& painter, QPointF corner, const QColor& color) const {
    if (m_bottom < m_top) return;
    const std::array<QRgb, 256> shades = ShadesOf(color);
    QImage picture(static_cast<int>(m_width), static_cast<int>(m_bottom - m_top + 1),
                   QImage::Format_ARGB32_Premultiplied);
    for (std::int64_t y = m_top; y <= m_bottom; ++y) {
        const std::uint8_t* source = m_clear.data() + y * m_stride;
        auto* target = reinterpret_cast<QRgb*>(picture.scanLine(static_cast<int>(y - m_top)));
        for (std::int64_t x = 0; x < m_width; ++x) target[x] = shades[255 - source[x]];
    }
    painter.drawImage(corner + QPointF(0, static_cast<double>(m_top)), picture);
}

} // namespace lumoplot

#include "sources/text/layout/aligned_fields.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::size_t kMostFields = 200;

bool IsTail(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Adds the places of the row's words; false when a tab hides them.
bool Occupy(std::string_view row, std::vector<bool>& places) {
    std::size_t place = 0;
    for (const char c : row) {
        if (c == '\t') return false;
        if (c == '\n' || c == '\r') break;
        if (IsTail(c)) continue;
        if (places.size() <= place) places.resize(place + 1);
        if (c != ' ') places[place] = true;
        ++place;
    }
    return true;
}

std::vector<TTextField> FieldsOf(const std::vector<bool>& places) {
    std::vector<TTextField> fields;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!places[i]) continue;
        if (i == 0 || !places[i - 1]) fields.push_back({static_cast<int>(i), 0});
        fields.back().end = static_cast<int>(i) + 1;
    }
    return fields;
}

} // namespace

std::vector<TTextField> FindAlignedFields(const TSampleTable& table) {
    const auto& voters = table.Voters();
    std::size_t least = kMostFields;
    std::size_t most = 0;
    std::vector<bool> places;
    for (const TSampleRow* row : voters) {
        least = std::min(least, row->cells.size());
        most = std::max(most, row->cells.size());
        if (row->cells.size() > kMostFields || row->text.size() > 4096 || !Occupy(row->text, places))
            return {};
    }
    if (least >= most || voters.size() < 2) return {};
    const auto fields = FieldsOf(places);
    // Words of texts may be divided by blanks; then there are fewer columns than words.
    return fields.size() >= 2 && fields.size() <= most ? fields : std::vector<TTextField>();
}

} // namespace lumoplot

#include "sources/text/layout/number_evidence.h"

#include <algorithm>

namespace lumoplot {
namespace {

struct TNumberForms {
    std::size_t openGroups = 0;
    std::size_t openDecimals = 0;
    std::size_t groups = 0;   ///< beyond doubt
    std::size_t decimals = 0; ///< beyond doubt
    std::size_t small = 0;
    std::size_t large = 0;
};

TNumberForms FormsOf(const TSampleTable& table, std::size_t column) {
    TNumberForms forms;
    for (const TSampleRow* row : table.Voters()) {
        if (row->KindAt(column) != TCellKind::Number) continue;
        const TNumberReading& number = row->numbers[column];
        if (number.isOpen && number.hasGroups && !number.hasDecimals) ++forms.openGroups;
        if (number.isOpen && number.hasDecimals && !number.hasGroups) ++forms.openDecimals;
        if (number.hasGroups && (!number.isOpen || number.hasDecimals)) ++forms.groups;
        if (number.hasDecimals && !number.isOpen) ++forms.decimals;
        if (number.isPlainSmall) ++forms.small;
        if (number.isPlainLarge) ++forms.large;
    }
    return forms;
}

double EvidenceOf(const TNumberForms& forms) {
    constexpr double kAgainst = 0.85;
    constexpr double kLess = 0.95;
    if (forms.openGroups > 0 && forms.groups == 0) {
        if (forms.large > 0) return kAgainst;
        if (forms.small == 0 && forms.decimals == 0) return kLess;
    }
    const bool hasPlain = forms.small > 0 && forms.large == 0;
    if (forms.openDecimals > 0 && forms.decimals == 0 && hasPlain) return kAgainst;
    return 1;
}

} // namespace

double NumberEvidence(const TSampleTable& table) {
    double evidence = 1;
    for (std::size_t column = 0; column < table.Columns().size(); ++column)
        if (table.Columns()[column] == TCellKind::Number)
            evidence = std::min(evidence, EvidenceOf(FormsOf(table, column)));
    return evidence;
}

bool HasDecimalSign(const TSampleTable& table, char sign) {
    const char other = sign == '.' ? ',' : '.';
    const auto has = [&](const TSampleRow& row) {
        for (std::size_t i = 0; i < row.kinds.size(); ++i) {
            const TNumberReading& number = row.numbers[i];
            const bool isGrouped =
                number.hasGroups && row.cells[i].text.find(other) != std::string_view::npos;
            if (row.kinds[i] == TCellKind::Number && (number.hasDecimals || isGrouped)) return true;
        }
        return false;
    };
    return std::ranges::any_of(table.Voters(), [&](auto* row) { return has(*row); });
}

} // namespace lumoplot

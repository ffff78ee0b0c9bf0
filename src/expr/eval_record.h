// One step of a compiled expression: what to do, where the operands are, where the result goes.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

namespace lumoplot {

class TExprWord;
struct TEvalRecord;

/// Reads the record's arguments and writes its result; touches nothing else, but for ":=" and "random".
using TEvalProcedure = void (*)(TEvalRecord& record);

inline constexpr int kMaxArguments = 6;

/// The value of what cannot be evaluated: the double whose eight bytes are all 0xFF.
inline constexpr double kNotANumber = std::bit_cast<double>(~std::uint64_t{0});

/// Every field of a new record is zero. An argument is the result of another record or the value of a
/// constant or variable; the record owns none of them. Slots behind the word's own arguments serve merged
/// steps.
struct TEvalRecord {
    TEvalProcedure Procedure = nullptr;
    TEvalRecord* Next = nullptr;
    double Result = 0;
    TExprWord* Word = nullptr;
    std::array<double*, kMaxArguments> Args = {};
};

} // namespace lumoplot

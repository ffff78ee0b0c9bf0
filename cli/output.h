// What the commands print. A result is one document; it is shown as an outline for people or as JSON. Numbers
// are printed in the shortest form that reads back.
#pragma once

#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>

namespace lumoplot {

/// Names and values in the order in which they were put in.
using TDocument = nlohmann::ordered_json;

enum class TOutputForm { Outline, Json };

/// "name: value" lines; objects are indented below their names, elements of arrays numbered from 1. Control
/// characters in texts are escaped, so no file can drive the terminal.
std::string OutlineText(const TDocument& document);

/// JSON, two blanks a level, arrays of plain values on one line. What is not finite is null.
std::string JsonText(const TDocument& document);

/// Lines of tab-divided numbers, one array a column; all have the same length.
std::string ColumnsText(std::initializer_list<std::span<const double>> columns);

/// Writes to standard output. Throws EFileError "Can not write to standard output".
void Print(std::string_view text);
void Print(const TDocument& document, TOutputForm form);

/// Passes on what Print has written. Throws as Print does.
void FlushOutput();

/// The one line on standard error by which the tool reports a failure or a message.
void PrintMessage(const std::string& text);

} // namespace lumoplot

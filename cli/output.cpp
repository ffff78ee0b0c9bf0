#include "cli/output.h"

#include "support/errors.h"
#include "support/message_text.h"
#include "support/number_text.h"

#include <cmath>
#include <cstdio>

namespace lumoplot {
namespace {

constexpr int kIndent = 2;

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

std::string JsonString(const std::string& text) {
    return TDocument(text).dump(-1, ' ', false, TDocument::error_handler_t::replace);
}

// Escaped as in JSON, but without quotes.
std::string PlainText(const std::string& text) {
    static constexpr char kHexDigits[] = "0123456789abcdef";
    std::string plain;
    for (const char c : text) {
        if (c == '\n')
            plain += "\\n";
        else if (c == '\t')
            plain += "\\t";
        else if (IsControl(c))
            plain += {'\\', 'x', kHexDigits[(c >> 4) & 15], kHexDigits[c & 15]};
        else
            plain += c;
    }
    return plain;
}

std::string ScalarText(const TDocument& value) {
    if (value.is_string()) return PlainText(value.get_ref<const std::string&>());
    if (value.is_number_float()) return FormatShortest(value.get<double>());
    return value.dump();
}

void AppendOutline(std::string& text, const std::string& name, const TDocument& value, std::size_t depth) {
    const std::string start = std::string(depth * kIndent, ' ') + PlainText(name);
    if (value.is_object()) {
        text += start + '\n';
        for (const auto& [key, field] : value.items()) AppendOutline(text, key, field, depth + 1);
    } else if (value.is_array()) {
        for (std::size_t i = 0; i < value.size(); ++i)
            AppendOutline(text, name + ' ' + std::to_string(i + 1), value[i], depth);
    } else {
        text += start + ": " + ScalarText(value) + '\n';
    }
}

bool IsPlainArray(const TDocument& value) {
    return value.is_array() && std::none_of(value.begin(), value.end(),
                                            [](const TDocument& element) { return element.is_structured(); });
}

void AppendJson(std::string& text, const TDocument& value, std::size_t depth);

void AppendJsonScalar(std::string& text, const TDocument& value) {
    if (value.is_number_float())
        text += std::isfinite(value.get<double>()) ? FormatShortest(value.get<double>()) : "null";
    else if (value.is_string())
        text += JsonString(value.get_ref<const std::string&>());
    else
        text += value.dump();
}

void AppendJsonElements(std::string& text, const TDocument& value, std::size_t depth) {
    const bool inOneLine = IsPlainArray(value);
    const std::string lineStart = inOneLine ? "" : '\n' + std::string((depth + 1) * kIndent, ' ');
    bool first = true;
    for (const auto& [key, element] : value.items()) {
        if (!first) text += inOneLine ? ", " : ",";
        first = false;
        text += lineStart;
        if (value.is_object()) text += JsonString(key) + ": ";
        AppendJson(text, element, depth + 1);
    }
    if (!inOneLine) text += '\n' + std::string(depth * kIndent, ' ');
}

void AppendJson(std::string& text, const TDocument& value, std::size_t depth) {
    if (!value.is_structured()) return AppendJsonScalar(text, value);
    text += value.is_object() ? '{' : '[';
    if (!value.empty()) AppendJsonElements(text, value, depth);
    text += value.is_object() ? '}' : ']';
}

[[noreturn]] void ThrowNoOutput() {
    throw EFileError("Can not write to standard output");
}

} // namespace

std::string OutlineText(const TDocument& document) {
    std::string text;
    for (const auto& [key, value] : document.items()) AppendOutline(text, key, value, 0);
    return text;
}

std::string JsonText(const TDocument& document) {
    std::string text;
    AppendJson(text, document, 0);
    return text + '\n';
}

std::string ColumnsText(std::initializer_list<std::span<const double>> columns) {
    std::string text;
    for (std::size_t row = 0; row < columns.begin()->size(); ++row) {
        for (const auto& column : columns) {
            if (&column != columns.begin()) text += '\t';
            text += FormatShortest(column[row]);
        }
        text += '\n';
    }
    return text;
}

void Print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) ThrowNoOutput();
}

void Print(const TDocument& document, TOutputForm form) {
    Print(form == TOutputForm::Json ? JsonText(document) : OutlineText(document));
}

void FlushOutput() {
    if (std::fflush(stdout) != 0) ThrowNoOutput();
}

void PrintMessage(const std::string& text) {
    std::fprintf(stderr, "%s\n", ShownLine("xydata: " + text).c_str());
}

} // namespace lumoplot

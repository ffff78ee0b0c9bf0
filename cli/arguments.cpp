#include "cli/arguments.h"

#include "support/errors.h"
#include "support/number_text.h"
#include "support/typed_number.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace lumoplot {
namespace {

bool IsOption(std::string_view argument) {
    if (argument == "-h" || argument == "--") return true;
    if (!argument.starts_with("--")) return false;
    const std::string_view name = argument.substr(2, argument.find('=') - 2);
    const auto isNamePart = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '-'; };
    return !name.starts_with('-') && std::all_of(name.begin(), name.end(), isNamePart);
}

} // namespace

std::string WithHiddenSign(const std::string& argument) {
    const bool isSigned = argument.size() > 1 && argument[0] == '-' && !IsOption(argument);
    return isSigned || argument.starts_with(' ') ? ' ' + argument : argument;
}

std::string WithShownSign(const std::string& argument) {
    return argument.starts_with(' ') ? argument.substr(1) : argument;
}

double NumberArgument(const std::string& name, const std::string& text) {
    if (!TryParseFloat(text)) throw EUsage(name + ": '" + text + "' is not a number");
    try {
        return ParseTypedNumber(text, TTypedComma::MayGroup);
    } catch (const EConvertError& error) {
        throw EUsage(name + ": " + error.what());
    }
}

CLI::Option* AddNumber(CLI::App& command, const std::string& name, std::optional<double>& value,
                       const std::string& help) {
    const auto store = [name, &value](const std::string& text) {
        value = NumberArgument(name, text);
        if (!std::isfinite(*value)) throw EUsage(name + ": a finite number is needed");
    };
    return command.add_option_function<std::string>(name, store, help)->type_name("NUMBER");
}

CLI::Option* AddInteger(CLI::App& command, const std::string& name, std::optional<int>& value,
                        const std::string& help) {
    const auto store = [name, &value](const std::string& text) {
        value = TryParseInteger(text);
        if (!value) throw EUsage(name + ": '" + text + "' is not an integer");
    };
    return command.add_option_function<std::string>(name, store, help)->type_name("N");
}

CLI::Option* AddCount(CLI::App& command, const std::string& name, std::optional<int>& value, int least,
                      const std::string& help) {
    const auto store = [name, least, &value](const std::string& text) {
        value = TryParseInteger(text);
        if (!value || *value < least)
            throw EUsage(name + ": '" + text + "' is not an integer from " + std::to_string(least));
    };
    return command.add_option_function<std::string>(name, store, help)->type_name("N");
}

void AddJson(CLI::App& command, TOutputForm& form) {
    command.add_flag_function(
        "--json", [&form](std::int64_t) { form = TOutputForm::Json; }, "Print one JSON object");
}

} // namespace lumoplot

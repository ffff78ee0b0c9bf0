#include "cli/arguments.h"

#include "support/number_text.h"

#include <cmath>

namespace lumoplot {

double NumberArgument(const std::string& name, const std::string& text) {
    const std::optional<double> value = TryParseFloat(text);
    if (!value) throw EUsage(name + ": '" + text + "' is not a number");
    return *value;
}

CLI::Option* AddNumber(CLI::App& command, const std::string& name, std::optional<double>& value,
                       const std::string& help) {
    const auto store = [name, &value](const std::string& text) {
        value = NumberArgument(name, text);
        if (!std::isfinite(*value)) throw EUsage(name + ": a finite number is needed");
    };
    return command.add_option_function<std::string>(name, store, help)->type_name("NUMBER");
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

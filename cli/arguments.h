// Arguments that several commands share, and numbers on the command line: read as everywhere in the system,
// independent of the locale.
#pragma once

#include "cli/output.h"

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace lumoplot {

/// Wrong usage: what is wrong with an argument, for the user.
class EUsage : public CLI::ParseError {
public:
    explicit EUsage(const std::string& message) : CLI::ParseError("Usage", message, 2) {}
};

/// Formulas and numbers may begin with a sign, which the argument parser would take for an option. A blank in
/// front hides it; an argument that begins with a blank gets one more. What looks like an option, "-h" or
/// "--" and letters, stays an option.
std::string WithHiddenSign(const std::string& argument);
/// Takes off the blank that WithHiddenSign has put in front.
std::string WithShownSign(const std::string& argument);

/// The number that an argument stands for. Throws EUsage "NAME: 'TEXT' is not a number".
double NumberArgument(const std::string& name, const std::string& text);

/// A floating-point argument, finite; others are wrong usage.
CLI::Option* AddNumber(CLI::App& command, const std::string& name, std::optional<double>& value,
                       const std::string& help);
/// An integer argument; others are wrong usage.
CLI::Option* AddInteger(CLI::App& command, const std::string& name, std::optional<int>& value,
                        const std::string& help);
/// An integer argument from `least` upwards; others are wrong usage.
CLI::Option* AddCount(CLI::App& command, const std::string& name, std::optional<int>& value, int least,
                      const std::string& help);
/// The switch --json.
void AddJson(CLI::App& command, TOutputForm& form);

} // namespace lumoplot

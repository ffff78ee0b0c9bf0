// The commands of the tool. Each function adds one to the program with its arguments, its help and its work,
// which runs when the whole command line has been understood. Work that fails throws.
#pragma once

#include <CLI/CLI.hpp>

namespace lumoplot {

void AddInfoCommand(CLI::App& program);
void AddConvertCommand(CLI::App& program);
void AddRenderCommand(CLI::App& program);
void AddAxisCommand(CLI::App& program);
void AddEvalCommand(CLI::App& program);
void AddStatsCommand(CLI::App& program);
void AddRegressCommand(CLI::App& program);
void AddFilterCommand(CLI::App& program);
void AddTransformCommand(CLI::App& program);
void AddPeaksCommand(CLI::App& program);
void AddFitCommand(CLI::App& program);
void AddFitAllCommand(CLI::App& program);
void AddVerifyCommand(CLI::App& program);

} // namespace lumoplot

// Where the tests find the files of the project and the programs that were built.
#pragma once

#include <string>

namespace lumoplot {

/// The full name of a file of the source tree ("examples/gauss1.dat").
std::string SourceFile(const std::string& name);
/// The full name of a program that was built beside the tests.
std::string BuiltProgram(const std::string& name);

} // namespace lumoplot

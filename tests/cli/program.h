// Runs the built command line tool as a script does.
#pragma once

#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace lumoplot {

struct TRunResult {
    int status = -1; ///< -1 when the program crashed or hung
    std::string out;
    std::string error;
};

using TArguments = std::vector<std::string>;

/// The built program's path.
std::string ProgramPath();

/// Runs the program with the input on its standard input. The platform is left to the program unless one is
/// named.
TRunResult RunProgram(const TArguments& arguments, const std::string& input = "",
                      const std::string& platform = "");

/// The object that the program prints with --json, which is added; a failed run fails the test.
QJsonObject RunForJson(TArguments arguments);

/// True for exactly one line that begins as the program's messages do.
bool IsOneMessage(const std::string& text);

/// A folder for the files of a test.
class TFolderTest : public testing::Test {
protected:
    std::string NameOf(const char* file) const { return m_folder.filePath(QString(file)).toStdString(); }
    std::string WithText(const char* file, const std::string& content) const;

private:
    QTemporaryDir m_folder;
};

std::string ContentOf(const std::string& name);

} // namespace lumoplot

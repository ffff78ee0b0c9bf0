#include "cli/program.h"
#include "common/places.h"

#include "support/replace_file.h"

#include <QJsonDocument>
#include <QProcess>

namespace lumoplot {
namespace {

constexpr int kPatience = 60000; // milliseconds; sanitizers on a busy machine are slow

} // namespace

std::string ProgramPath() {
    return BuiltProgram("xydata");
}

TRunResult RunProgram(const TArguments& arguments, const std::string& input, const std::string& platform) {
    QStringList list;
    for (const auto& argument : arguments) list << QString::fromStdString(argument);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_QPA_PLATFORM");
    if (!platform.empty()) environment.insert("QT_QPA_PLATFORM", QString::fromStdString(platform));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QString::fromStdString(ProgramPath()), list);
    program.write(input.data(), static_cast<qint64>(input.size()));
    program.closeWriteChannel();
    TRunResult result;
    if (program.waitForFinished(kPatience) && program.exitStatus() == QProcess::NormalExit)
        result.status = program.exitCode();
    result.out = program.readAllStandardOutput().toStdString();
    result.error = program.readAllStandardError().toStdString();
    return result;
}

QJsonObject RunForJson(TArguments arguments) {
    arguments.push_back("--json");
    const TRunResult result = RunProgram(arguments);
    EXPECT_EQ(result.status, 0) << result.error;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(result.out), &error);
    EXPECT_TRUE(document.isObject()) << error.errorString().toStdString() << ": " << result.out;
    return document.object();
}

bool IsOneMessage(const std::string& text) {
    const QString line = QString::fromStdString(text);
    return text.starts_with("xydata: ") && text.find('\n') == text.size() - 1 && line.size() <= 201;
}

std::string TFolderTest::WithText(const char* file, const std::string& content) const {
    const std::string name = NameOf(file);
    ReplaceFile(name, std::vector<std::uint8_t>(content.begin(), content.end()));
    return name;
}

std::string ContentOf(const std::string& name) {
    const auto bytes = ReadWholeFile(name);
    return {bytes.begin(), bytes.end()};
}

} // namespace lumoplot

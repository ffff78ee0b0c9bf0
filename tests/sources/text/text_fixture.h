// What the tests of text files share: a directory that holds the texts, and loading that collects the points.
#pragma once

#include "sources/text/loading/text_loader.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumoplot {

using TPoints = std::vector<std::pair<double, double>>;

class TTextFiles : public testing::Test {
protected:
    std::string Write(std::string_view text, const char* name = "data.txt") {
        QFile file(m_directory.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
        return file.fileName().toStdString();
    }

    TTextReport Load(const std::string& fileName, TProgress* progress = nullptr) {
        points.clear();
        TSilentProgress silent;
        yErrors.clear();
        const auto sink = [this](std::span<const double> x, std::span<const double> y,
                                 std::span<const double> errors) {
            for (std::size_t i = 0; i < x.size(); ++i) points.emplace_back(x[i], y[i]);
            yErrors.insert(yErrors.end(), errors.begin(), errors.end());
        };
        options.restart = [this] { points.clear(), yErrors.clear(); };
        return LoadText(fileName, info, options, sink, progress ? *progress : silent);
    }
    TTextReport LoadThis(std::string_view text) { return Load(Write(text)); }

    /// The text of the error that loading throws, without the directory; empty when it throws none.
    std::string ErrorOf(const std::string& fileName);

    TDSInfo info;
    TTextLoadOptions options;
    TPoints points;
    std::vector<double> yErrors;
    QTemporaryDir m_directory;
};

inline std::string TTextFiles::ErrorOf(const std::string& fileName) {
    try {
        Load(fileName);
    } catch (const std::exception& error) {
        const QString directory = m_directory.path() + QStringLiteral("/");
        return QString::fromUtf8(error.what()).remove(directory).toStdString();
    }
    return {};
}

} // namespace lumoplot

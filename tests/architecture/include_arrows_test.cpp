// Holds the architecture: files include only what the table of layers lets them, none each other in a loop,
// and the headers that hosts see none that they do not.
#include "common/places.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFilesInAFolder = 30;

struct TLayer {
    std::string toolkit;
    std::set<std::string> mayUse; // itself included
};

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

// The table that CMake links by. A layer may use those that its row names and all that these use.
std::map<std::string, TLayer> ReadLayers() {
    std::map<std::string, TLayer> layers;
    std::ifstream file(lumoplot::SourceFile("src/layers.txt"));
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        std::vector<std::string> cells(4);
        std::istringstream row(line);
        for (auto& cell : cells) {
            std::getline(row, cell, '|');
            cell = Trimmed(cell);
        }
        TLayer& layer = layers[cells[0]];
        layer.toolkit = cells[2];
        layer.mayUse.insert(cells[0]);
        std::istringstream uses(cells[3]);
        for (std::string use; uses >> use;) {
            EXPECT_TRUE(layers.contains(use)) << cells[0] << " uses " << use << ", which is not above it";
            layer.mayUse.insert(layers[use].mayUse.begin(), layers[use].mayUse.end());
        }
    }
    return layers;
}

// Layers are folders below src/; the programs stand beside it.
fs::path FolderOfLayer(const std::string& layer) {
    const fs::path root(lumoplot::SourceFile(""));
    return fs::exists(root / "src" / layer) ? root / "src" / layer : root / layer;
}

std::vector<std::string> IncludesOf(const fs::path& path) {
    static const std::regex include("^\\s*#\\s*include\\s*\"([^\"]+)\"");
    std::vector<std::string> list;
    std::ifstream file(path);
    std::smatch match;
    for (std::string line; std::getline(file, line);)
        if (std::regex_search(line, match, include)) list.push_back(match[1]);
    return list;
}

using TIncludes = std::map<std::string, std::vector<std::string>>;

// The files of all layers, named as they are included, and which of them each one includes.
TIncludes ReadIncludes() {
    TIncludes includes;
    for (const auto& [name, layer] : ReadLayers())
        for (const auto& entry : fs::directory_iterator(FolderOfLayer(name))) {
            const std::string extension = entry.path().extension().string();
            if (extension != ".h" && extension != ".cpp") continue;
            includes[name + '/' + entry.path().filename().string()] = IncludesOf(entry.path());
        }
    return includes;
}

std::string FolderOf(const std::string& file) {
    return fs::path(file).parent_path().generic_string();
}

TEST(Architecture, EveryFileBelongsToALayerAndNoFolderIsCrowded) {
    const auto layers = ReadLayers();
    std::map<std::string, std::size_t> files;
    for (const char* top : {"src", "host", "cli"})
        for (const auto& entry : fs::recursive_directory_iterator(lumoplot::SourceFile(top))) {
            const std::string extension = entry.path().extension().string();
            if (extension != ".h" && extension != ".cpp") continue;
            const std::string folder =
                FolderOf(fs::relative(entry.path(), lumoplot::SourceFile("")).generic_string());
            ++files[folder.starts_with("src/") ? folder.substr(4) : folder];
        }
    EXPECT_GT(files.size(), 20u);
    for (const auto& [folder, count] : files) {
        EXPECT_TRUE(layers.contains(folder)) << folder;
        EXPECT_LE(count, kMostFilesInAFolder) << folder;
    }
}

TEST(Architecture, ArrowsAreThoseOfTheTable) {
    const auto layers = ReadLayers();
    for (const auto& [file, list] : ReadIncludes())
        for (const auto& included : list) {
            if (!layers.contains(FolderOf(included))) continue; // generated from a form beside it
            EXPECT_TRUE(layers.at(FolderOf(file)).mayUse.contains(FolderOf(included)))
                << file << " includes " << included;
        }
}

TEST(Architecture, NoFilesIncludeEachOtherInALoop) {
    const TIncludes includes = ReadIncludes();
    std::set<std::string> finished, open;
    const std::function<void(const std::string&)> visit = [&](const std::string& file) {
        if (finished.contains(file) || !includes.contains(file)) return;
        ASSERT_TRUE(open.insert(file).second) << file << " is part of a loop";
        for (const auto& included : includes.at(file)) visit(included);
        open.erase(file);
        finished.insert(file);
    };
    for (const auto& [file, list] : includes) visit(file);
}

// What a host sees is a list; its names are told apart in the one folder that they are installed in.
TEST(Architecture, PublicHeadersIncludeNoPrivateOne) {
    const fs::path source = fs::path(lumoplot::SourceFile("src"));
    std::set<std::string> headers, names;
    std::ifstream list(source / "public_headers.txt");
    for (std::string line; std::getline(list, line);)
        if (!Trimmed(line).empty() && line.front() != '#') headers.insert(Trimmed(line));
    EXPECT_GT(headers.size(), 15u);
    for (const auto& header : headers) {
        EXPECT_TRUE(fs::exists(source / header)) << header;
        EXPECT_TRUE(names.insert(fs::path(header).filename().string()).second) << header;
        for (const auto& included : IncludesOf(source / header))
            EXPECT_TRUE(headers.contains(included)) << header << " includes " << included;
    }
}

TEST(Architecture, TheModelKnowsNoToolkit) {
    const std::regex toolkit("^\\s*#\\s*include\\s*<Q[A-Za-z]+");
    for (const auto& [name, layer] : ReadLayers()) {
        if (layer.toolkit != "-") continue;
        for (const auto& entry : fs::directory_iterator(FolderOfLayer(name))) {
            std::ifstream stream(entry.path());
            for (std::string line; std::getline(stream, line);)
                EXPECT_FALSE(std::regex_search(line, toolkit)) << entry.path() << ": " << line;
        }
    }
}

} // namespace

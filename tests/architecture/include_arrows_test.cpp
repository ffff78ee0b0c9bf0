// Holds the architecture: a layer includes only itself and the layers above it, and no files include each
// other in a loop.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// From top to bottom; an arrow may only run upwards.
const std::vector<std::string> kLayers = {
    "support", "expr",          "data/stream", "fit",    "controls", "fit/equation_editor", "data", "sources",
    "graph",   "graph/drawing", "dialogs",     "dialog", "editor"};

using TIncludes = std::map<std::string, std::vector<std::string>>;

// The files below src/, and which of them each one includes.
TIncludes ReadIncludes() {
    const fs::path root = fs::path(LUMOPLOT_SOURCE_DIR) / "src";
    const std::regex include("^\\s*#\\s*include\\s*\"([^\"]+)\"");
    TIncludes includes;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") continue;
        auto& list = includes[fs::relative(entry.path(), root).generic_string()];
        std::ifstream file(entry.path());
        std::smatch match;
        for (std::string line; std::getline(file, line);)
            if (std::regex_search(line, match, include)) list.push_back(match[1]);
    }
    return includes;
}

std::string FolderOf(const std::string& file) {
    return fs::path(file).parent_path().generic_string();
}

// The place of a file's layer in the list, or -1.
int LayerOf(const std::string& file) {
    const auto found = std::ranges::find(kLayers, FolderOf(file));
    return found == kLayers.end() ? -1 : static_cast<int>(found - kLayers.begin());
}

TEST(Architecture, EveryFileBelongsToALayer) {
    const TIncludes includes = ReadIncludes();
    EXPECT_GT(includes.size(), 50u);
    for (const auto& [file, list] : includes) EXPECT_GE(LayerOf(file), 0) << file;
}

TEST(Architecture, ArrowsRunUpwards) {
    for (const auto& [file, list] : ReadIncludes())
        for (const auto& included : list) {
            if (LayerOf(included) < 0) continue; // generated from a form beside it
            EXPECT_LE(LayerOf(included), LayerOf(file)) << file << " includes " << included;
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

TEST(Architecture, TheModelKnowsNoToolkit) {
    const std::set<std::string> model = {"support", "expr", "data/stream", "fit", "data"};
    const std::regex toolkit("^\\s*#\\s*include\\s*<Q[A-Za-z]+");
    const fs::path root = fs::path(LUMOPLOT_SOURCE_DIR) / "src";
    for (const auto& [file, list] : ReadIncludes()) {
        if (!model.contains(FolderOf(file))) continue;
        std::ifstream stream(root / file);
        for (std::string line; std::getline(stream, line);)
            EXPECT_FALSE(std::regex_search(line, toolkit)) << file << ": " << line;
    }
}

} // namespace

// The tables of tests/data_files: a line is a case, its fields stand between tabs.
#pragma once

#include "common/places.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

/// The field with what \n, \r, \t, \\ and \xHH stand for.
inline std::string Unescaped(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\' || i + 1 == field.size()) {
            text += field[i];
        } else if (const char code = field[++i]; code == 'x') {
            text += static_cast<char>(std::strtol(std::string(field.substr(i + 1, 2)).c_str(), nullptr, 16));
            i += 2;
        } else {
            text += code == 'n' ? '\n' : code == 'r' ? '\r' : code == 't' ? '\t' : code;
        }
    }
    return text;
}

/// The cases of a table with so many fields. Lines that begin with # are remarks.
inline std::vector<std::vector<std::string>> ReadCases(const std::string& name, std::size_t fields) {
    std::vector<std::vector<std::string>> cases;
    std::ifstream file(SourceFile("tests/data_files/" + name));
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        if (line.ends_with('\r')) line.pop_back();
        auto& row = cases.emplace_back();
        for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
            end = line.find('\t', start);
            row.push_back(Unescaped(std::string_view(line).substr(start, end - start)));
        }
        if (row.size() != fields) throw std::runtime_error(name + ": " + line);
    }
    if (cases.empty()) throw std::runtime_error("no cases in " + name);
    return cases;
}

} // namespace lumoplot

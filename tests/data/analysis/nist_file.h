// Reads the reference data sets of the statistical reference data (StRD) of NIST.
#pragma once

#include "common/places.h"
#include "support/number_text.h"

#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace lumoplot {

/// The text of a data set, its rows of numbers and the numbers certified for it.
class TNistFile {
public:
    explicit TNistFile(const std::string& name) {
        std::ifstream file(SourceFile("tests/data_files/nist/" + name));
        EXPECT_TRUE(file) << name;
        bool inData = false;
        for (std::string line; std::getline(file, line);) {
            if (!inData)
                m_head.push_back(line);
            else if (line.find_first_of("0123456789") != std::string::npos)
                m_rows.push_back(line);
            inData = inData || NamesColumns(line);
        }
    }

    /// The first number after the label in the lines above the data.
    double Certified(const std::string& label) const {
        for (const std::string& line : m_head) {
            const std::size_t at = line.find(label);
            if (at == std::string::npos) continue;
            std::istringstream words(line.substr(at + label.size()));
            for (std::string word; words >> word;)
                if (const auto number = TryParseFloat(word)) return *number;
        }
        ADD_FAILURE() << label;
        return NAN;
    }

    std::vector<double> Column(std::size_t index) const {
        std::vector<double> values;
        for (const std::string& row : m_rows) {
            std::istringstream words(row);
            std::string word;
            for (std::size_t i = 0; i <= index; ++i) words >> word;
            values.push_back(ParseFloat(word));
        }
        return values;
    }

private:
    // "Data:" heads the description too, there followed by words or a number of variables.
    static bool NamesColumns(const std::string& line) {
        std::istringstream words(line);
        std::string word;
        return words >> word && word == "Data:" && words >> word && (word == "y" || word == "Y");
    }

    std::vector<std::string> m_head;
    std::vector<std::string> m_rows;
};

/// Number of digits to which a value agrees with the certified one; not cut off at those that are certified.
inline double AgreeingDigits(double value, double certified) {
    if (value == certified) return 17;
    return -std::log10(std::abs(value - certified) / std::abs(certified));
}

} // namespace lumoplot

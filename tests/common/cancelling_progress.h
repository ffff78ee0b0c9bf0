// A progress that cancels after some steps and keeps what it was told.
#pragma once

#include "support/progress.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace lumoplot {

class TCancellingProgress : public TProgress {
public:
    /// Takes so many steps; the next one cancels.
    explicit TCancellingProgress(int steps) : m_left(steps) {}

    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override {
        Stages.push_back(caption);
        Position = minimum;
        Maximum = maximum;
    }
    [[nodiscard]] bool StepTo(std::int64_t position) override {
        EXPECT_GE(position, Position);
        EXPECT_LE(position, Maximum);
        Position = position;
        ++Steps;
        return m_left-- > 0;
    }

    std::vector<std::string> Stages;
    std::int64_t Position = 0;
    std::int64_t Maximum = 0;
    int Steps = 0;

private:
    int m_left;
};

} // namespace lumoplot

// What long work reports to, and how it learns that the user has cancelled. Windows show it; scripts and
// tests use the one that does nothing.
#pragma once

#include "support/export.h"

#include <cstdint>
#include <string>

namespace lumoplot {

class TProgress {
public:
    virtual ~TProgress() = default;
    /// Starts a stage that runs from `minimum` to `maximum` under the given caption.
    virtual void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) = 0;
    /// Reports a position; false when the user has cancelled, and the work then stops and undoes what it
    /// began. Cheap enough to be called every few thousand steps: an implementation limits its own redrawing.
    [[nodiscard]] virtual bool StepTo(std::int64_t position) = 0;
};

/// Reports nothing and is never cancelled.
class TSilentProgress final : public TProgress {
public:
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override { return true; }
};

} // namespace lumoplot

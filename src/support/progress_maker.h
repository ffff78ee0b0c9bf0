// How the model gets a progress for work that it starts by itself. A program that has windows installs a
// maker of its progress window; without one such work is done silently.
#pragma once

#include "support/progress.h"

#include <functional>
#include <memory>

namespace lumoplot {

using TProgressMaker = std::function<std::unique_ptr<TProgress>()>;

/// A progress from the installed maker; a silent one without a maker.
std::unique_ptr<TProgress> MakeProgress();

/// Installs a maker while it lives and puts the one before back afterwards.
class TProgressMakerScope {
public:
    XYGRAPH_EXPORT explicit TProgressMakerScope(TProgressMaker maker);
    XYGRAPH_EXPORT ~TProgressMakerScope();
    TProgressMakerScope(const TProgressMakerScope&) = delete;
    TProgressMakerScope& operator=(const TProgressMakerScope&) = delete;

private:
    TProgressMaker m_before;
};

} // namespace lumoplot

#include "support/progress_maker.h"

#include <utility>

namespace lumoplot {
namespace {

TProgressMaker& Installed() {
    static TProgressMaker maker;
    return maker;
}

} // namespace

std::unique_ptr<TProgress> MakeProgress() {
    if (Installed()) return Installed()();
    return std::make_unique<TSilentProgress>();
}

TProgressMakerScope::TProgressMakerScope(TProgressMaker maker)
    : m_before(std::exchange(Installed(), std::move(maker))) {
}

TProgressMakerScope::~TProgressMakerScope() {
    Installed() = std::move(m_before);
}

} // namespace lumoplot

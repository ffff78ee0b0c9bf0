#include "sources/database/connection/password_asker.h"

#include "data/series/ds_info.h"

#include <utility>

namespace lumoplot {
namespace {

TPasswordAsker& InstalledAsker() {
    static TPasswordAsker asker;
    return asker;
}

} // namespace

bool AskForPassword(const std::string& connection, const std::string& reason) {
    const std::string place = WithoutPassword(connection);
    const auto password = InstalledAsker() ? InstalledAsker()(place, reason) : std::nullopt;
    if (password) KeepPassword(place, *password);
    return password.has_value();
}

TPasswordAskerScope::TPasswordAskerScope(TPasswordAsker asker)
    : m_before(std::exchange(InstalledAsker(), std::move(asker))) {
}

TPasswordAskerScope::~TPasswordAskerScope() {
    InstalledAsker() = std::move(m_before);
}

} // namespace lumoplot

// How a password that is missing comes from the user: a program that has windows installs who asks for it. It
// is kept in memory alone.
#pragma once

#include "sources/database/connection/connection.h"
#include "support/errors.h"

#include <functional>
#include <optional>

namespace lumoplot {

/// A server wants a password, or another one.
class EPasswordNeeded : public EFileError {
public:
    using EFileError::EFileError;
};

/// Gets the connection without a password and why one is needed; nothing where none is given.
using TPasswordAsker =
    std::function<std::optional<std::string>(const std::string& connection, const std::string& reason)>;

/// Asks who is installed and keeps the answer; false without both.
bool AskForPassword(const std::string& connection, const std::string& reason);

/// Installs one while it lives and puts the one before back afterwards. In the thread of the windows.
class TPasswordAskerScope {
public:
    XYGRAPH_EXPORT explicit TPasswordAskerScope(TPasswordAsker asker);
    XYGRAPH_EXPORT ~TPasswordAskerScope();
    TPasswordAskerScope(const TPasswordAskerScope&) = delete;
    TPasswordAskerScope& operator=(const TPasswordAskerScope&) = delete;

private:
    TPasswordAsker m_before;
};

} // namespace lumoplot

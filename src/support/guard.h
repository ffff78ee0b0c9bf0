// The one way by which a window's slot runs code that can throw: the text of the exception is shown through
// the message sink, and none passes into the toolkit's event loop.
#pragma once

#include "support/message_sink.h"

#include <exception>
#include <utility>

namespace lumoplot {

/// Runs `action`; on an exception shows its text and returns false.
template <class TAction>
bool Guarded(TAction&& action) {
    try {
        std::forward<TAction>(action)();
        return true;
    } catch (const std::exception& error) {
        ShowMessage(error.what(), TMessageKind::Error);
    }
    return false;
}

} // namespace lumoplot

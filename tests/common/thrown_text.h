// What an action that must fail says.
#pragma once

#include "support/errors.h"

#include <gtest/gtest.h>
#include <string>

namespace lumoplot {

/// The text of the error that the action throws; a failed test when it throws none.
template <class TError = ELumoError, class TAction>
std::string ThrownText(TAction action) {
    try {
        action();
    } catch (const TError& error) {
        return error.what();
    }
    ADD_FAILURE() << "no error";
    return {};
}

} // namespace lumoplot

// What a DDE link asks another Windows program for: the service that the program calls itself, one of its
// topics (a document, say) and an item in it, whose text is the data.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumoplot {

struct TDdeSetup {
    std::string service;
    std::string topic;
    std::string item;
};

/// Of "SERVICE|TOPIC!ITEM"; nothing when a part is missing or longer than the 255 characters that DDE takes.
/// The topic may hold exclamation marks, the item may not.
std::optional<TDdeSetup> ParseDde(std::string_view address);

} // namespace lumoplot

// A program that others may follow by DDE: one service with one topic "data" and one item "table", in this
// process. One at a time.
#pragma once

#if defined(_WIN32)
#include <string>

namespace lumoplot {

class TDdeServer {
public:
    explicit TDdeServer(const std::string& service);
    ~TDdeServer();
    TDdeServer(const TDdeServer&) = delete;
    TDdeServer& operator=(const TDdeServer&) = delete;

    /// The bytes of the item, as CF_TEXT; who follows is told.
    void SetText(const std::string& text);
    /// How often somebody has asked for the text.
    int TimesAsked() const;
};

} // namespace lumoplot
#endif

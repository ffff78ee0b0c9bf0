// The message sink of a program with windows: messages and questions of the model become message boxes over
// the window that the user works in.
#pragma once

#include "support/message_sink.h"

namespace lumoplot {

/// Installed while it lives.
class TMessageBoxes final : public TMessageSink {
public:
    TMessageBoxes();
    ~TMessageBoxes() override;
    TMessageBoxes(const TMessageBoxes&) = delete;
    TMessageBoxes& operator=(const TMessageBoxes&) = delete;

    void Show(TMessageKind kind, const std::string& text) override;
    bool Ask(TMessageKind kind, const std::string& text) override;

private:
    TMessageSink* m_previous;
};

} // namespace lumoplot

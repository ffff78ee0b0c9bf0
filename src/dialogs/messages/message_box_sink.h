// Shows the model's messages as message boxes over the active window.
#pragma once

#include "controls/widgets_export.h"
#include "support/message_sink.h"

namespace lumoplot {

class TMessageBoxSink : public TMessageSink {
public:
    void Show(TMessageKind kind, const std::string& text) override;
    bool Ask(TMessageKind kind, const std::string& text) override;
};

/// Installs a sink of message boxes for a scope where no other sink is installed.
class XYWIDGETS_EXPORT TMessageBoxScope {
public:
    TMessageBoxScope();
    ~TMessageBoxScope();
    TMessageBoxScope(const TMessageBoxScope&) = delete;
    TMessageBoxScope& operator=(const TMessageBoxScope&) = delete;

private:
    TMessageBoxSink m_sink;
    TMessageSink* m_before;
};

} // namespace lumoplot

#include "support/message_sink.h"

#include "support/message_text.h"

#include <cstdio>
#include <utility>

namespace lumoplot {
namespace {

TMessageSink* g_sink = nullptr;

// Texts may be made of what files hold and of their names.
std::string ShownText(const std::string& text, TMessageKind kind) {
    return kind == TMessageKind::Error ? ShownLine(text) : ShownParagraph(text);
}

} // namespace

TMessageSink* InstallMessageSink(TMessageSink* sink) {
    return std::exchange(g_sink, sink);
}

void ShowMessage(const std::string& text, TMessageKind kind) {
    if (g_sink)
        g_sink->Show(kind, ShownText(text, kind));
    else
        std::fprintf(stderr, "%s\n", ShownText(text, kind).c_str());
}

bool AskYesNo(const std::string& text, TMessageKind kind) {
    return g_sink && g_sink->Ask(kind, ShownText(text, kind));
}

} // namespace lumoplot

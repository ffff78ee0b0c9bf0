#include "support/message_sink.h"

#include <cstdio>
#include <utility>

namespace lumoplot {
namespace {

TMessageSink* g_sink = nullptr;

} // namespace

TMessageSink* InstallMessageSink(TMessageSink* sink) {
    return std::exchange(g_sink, sink);
}

void ShowMessage(const std::string& text, TMessageKind kind) {
    if (g_sink)
        g_sink->Show(kind, text);
    else
        std::fprintf(stderr, "%s\n", text.c_str());
}

bool AskYesNo(const std::string& text, TMessageKind kind) {
    return g_sink && g_sink->Ask(kind, text);
}

} // namespace lumoplot

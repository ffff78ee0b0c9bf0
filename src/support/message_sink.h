// How the model tells the user something without knowing a window. A program installs its sink; the windows'
// sink shows message boxes, a test's sink records. Without one, messages go to standard error and questions
// get No.
#pragma once

#include "support/export.h"

#include <string>

namespace lumoplot {

enum class TMessageKind { Information, Warning, Error, Confirmation };

class TMessageSink {
public:
    virtual ~TMessageSink() = default;
    virtual void Show(TMessageKind kind, const std::string& text) = 0;
    /// A Yes/No question; true for Yes.
    virtual bool Ask(TMessageKind kind, const std::string& text) = 0;
};

/// Installs a sink (borrowed; null for none) and returns the one before, to be put back.
XYGRAPH_EXPORT TMessageSink* InstallMessageSink(TMessageSink* sink);

XYGRAPH_EXPORT void ShowMessage(const std::string& text, TMessageKind kind = TMessageKind::Information);
XYGRAPH_EXPORT bool AskYesNo(const std::string& text, TMessageKind kind = TMessageKind::Confirmation);

} // namespace lumoplot

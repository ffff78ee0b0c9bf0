// A message sink that records what it is told and answers questions as a test wants.
#pragma once

#include "support/message_sink.h"

#include <string>
#include <vector>

namespace lumoplot {

class TRecordingSink : public TMessageSink {
public:
    explicit TRecordingSink(bool answer = true) : Answer(answer), m_before(InstallMessageSink(this)) {}
    ~TRecordingSink() override { InstallMessageSink(m_before); }

    void Show(TMessageKind, const std::string& text) override { Texts.push_back(text); }
    bool Ask(TMessageKind, const std::string& text) override {
        Texts.push_back(text);
        return Answer;
    }
    /// The only text told so far, or what else there is.
    std::string Only() const {
        return Texts.size() == 1 ? Texts.front() : std::to_string(Texts.size()) + " texts";
    }

    std::vector<std::string> Texts;
    bool Answer;

private:
    TMessageSink* m_before;
};

} // namespace lumoplot

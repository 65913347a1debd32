#pragma once

#include "model/People.h"

#include <string>

namespace orvista::console {

/// Keeps the first thing that the core has to say: what follows is the same trouble again.
class FirstError final : public Messages {
public:
    void show(MessageIcon /*icon*/, const std::string& text) override {
        if (text_.empty())
            text_ = text;
    }
    bool askYesNo(const std::string& /*text*/) override { return false; }
    Answer askYesNoCancel(const std::string& /*text*/) override { return Answer::Cancel; }

    bool any() const { return !text_.empty(); }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

} // namespace orvista::console

#pragma once

#include "model/People.h"

namespace orvista {

/// Takes what the core has to say to nobody, where whether the work was done tells enough.
class NoMessages final : public Messages {
public:
    void show(MessageIcon /*icon*/, const std::string& /*text*/) override {}
    bool askYesNo(const std::string& /*text*/) override { return false; }
    Answer askYesNoCancel(const std::string& /*text*/) override { return Answer::Cancel; }
};

} // namespace orvista

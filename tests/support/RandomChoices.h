#pragma once

#include "script/MessagePage.h"

#include <cstddef>
#include <random>

namespace orvista::testing {

/// Chooses in the message wizard at random, the same in every run.
class RandomChoices {
public:
    explicit RandomChoices(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t bound) { return random_() % bound; }

    /// A form without its text and its path; one of `pages` of them shows a bitmap.
    MessageForm choices(std::size_t pages) {
        MessageForm form;
        form.bitmap = below(pages) == 0;
        form.cbFgClr = below(4);
        form.cbBgClr = below(4);
        form.cbFont = below(2);
        for (FieldChoice& field : form.fields)
            field = {below(98), below(4), below(4)};
        chooseEffects(form);
        return form;
    }

    /// How the page comes, stays and goes.
    void chooseEffects(MessageForm& form) {
        form.cbInEffect = below(6);
        form.cbIFSpeed = below(3);
        form.cbSpEffect = below(2);
        form.cbDelay = below(10);
        form.cbOutEffect = below(6);
        form.cbOFSpeed = below(3);
    }

private:
    std::mt19937 random_;
};

} // namespace orvista::testing

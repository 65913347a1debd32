#pragma once

#include "check/Fixing.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace orvista {

/// Mends messages of many pages part by part, so that a fix costs by the length of a page, not by that of the
/// message. A part goes from one CLEAR to the next; what is found in it does not depend on the other parts,
/// unless the project's files take one of the message's lines for their own.
class PartFixing {
public:
    /// \param project whose variables the messages show
    /// \param bitmaps of its folder; must outlive the object
    /// \param columns as of Fixing
    PartFixing(const Project& project, const BitmapProvider& bitmaps, int columns);

    struct Tried {
        bool isDecided = false;           ///< false where it takes more than the part to tell
        std::optional<Fixing::Done> done; ///< as Fixing::mend() gives it, for the whole message
    };
    /// \param script of the message that the finding is about
    /// \param found in it; follows a fix that is made
    Tried mend(const Finding& finding, std::string_view script, CheckedMessage& found,
               const std::function<bool(const Fix&)>& mayBe);
    /// The message is another one than mend() left.
    void forget(Item message) { parts_.erase(message); }

private:
    struct Part {
        std::size_t bytes = 0;
        std::size_t lines = 0;
        CheckedMessage checked; ///< its lines are the part's
    };
    struct Spot {
        std::size_t part = 0; ///< from 0
        std::size_t bytesBefore = 0;
        std::size_t linesBefore = 0;
    };

    std::vector<Part>& partsOf(Item message, std::string_view script);
    static Spot spotOf(const std::vector<Part>& parts, std::size_t line);
    static void replace(Findings& findings, const Spot& spot, const Part& before, const Part& after);

    Fixing alone_; ///< of a project whose only message is one part
    std::map<Item, std::vector<Part>> parts_;
};

} // namespace orvista

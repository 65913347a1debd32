#pragma once

#include "check/Finding.h"
#include "check/Fix.h"
#include "check/Fixing.h"
#include "model/Change.h"
#include "model/Item.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Mending all findings of some kinds at once.
namespace orvista {

/// The lines of a script, or the text of a field, that a fix changes. Device bytes, lines parted by CR LF.
struct OldAndNew {
    std::string before;
    std::string after;
};
/// \param project after the change
OldAndNew linesOf(const Project& project, const Change& change);

/// A finding that was mended, and how.
struct MendedFinding {
    Finding finding; ///< its place as it was then, after those before it were mended
    Fix fix;
    std::vector<Change> changes;
    std::vector<OldAndNew> lines; ///< one of each change
};

/// Which findings are to be mended.
struct FixChoice {
    std::vector<Code> codes; ///< all their fixes count; empty: of all codes those that are sure
    std::vector<Item> items; ///< empty: all
};

/// The codes that the choice is about.
std::vector<Code> codesOf(const FixChoice& choice);

/// Mends them in the order of their items and lines by the first fix that holds, again and again until
/// nothing more can be done.
/// \param goesOn asked before each finding, with the number of those mended so far
std::vector<MendedFinding> mendAll(Fixing& fixing, const FixChoice& choice,
                                   const std::function<bool(std::size_t)>& goesOn);

/// All that can be mended: first what is sure, so that it does not stand on what is not.
/// \param goesOn as above
std::vector<MendedFinding> mendEverything(Fixing& fixing, const std::function<bool(std::size_t)>& goesOn);

/// Some of these fixes.
struct SomeMended {
    const std::vector<MendedFinding>& all; ///< in the order in which they were made
    const std::vector<bool>& ticks;        ///< which of them, as many as there are
    bool isOfThisProject = true;           ///< false: of another than the one to be mended
};

/// Makes the same fixes: as they were what does not depend on those that are left out, the rest as far as it
/// holds without them.
/// \param fixing a project as it was before all of them
/// \param goesOn asked before each that is tried, with the number of those made so far
/// \returns false where that said no
bool mendSome(Fixing& fixing, const SomeMended& some, const std::function<bool(std::size_t)>& goesOn);

/// How many findings of the choice there are by now.
std::size_t countOf(Fixing& fixing, const FixChoice& choice);

} // namespace orvista

#pragma once

#include "check/Finding.h"
#include "check/Fix.h"
#include "display/BitmapProvider.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "model/Project.h"

#include <vector>

/// What may mend a finding, best first. Whether it does is for others to try.
namespace orvista {

/// What the findings are made of. All must outlive what is made with it.
struct FixGround {
    const Project& project;
    const FieldFormats& formats; ///< the project's
    PanelSize panel;
    const BitmapProvider& bitmaps;
};

/// Of a text, bitmap or value that does not fit on the panel.
std::vector<Fix> cutFixes(const FixGround& ground, const Finding& finding);
/// Of a value that covers characters.
std::vector<Fix> gapFixes(const FixGround& ground, const Finding& finding);
/// Of what covers a value.
std::vector<Fix> overlapFixes(const FixGround& ground, const Finding& finding);
/// Of a word that is one letter from another.
std::vector<Fix> commandFixes(const FixGround& ground, const Finding& finding);
std::vector<Fix> argumentFixes(const FixGround& ground, const Finding& finding);
std::vector<Fix> bitmapNameFixes(const FixGround& ground, const Finding& finding);
/// Of lines that the project's files do not keep.
std::vector<Fix> reservedLineFixes(const FixGround& ground, const Finding& finding);
std::vector<Fix> lostMessageFixes(const FixGround& ground, const Finding& finding);
/// Of a variable's settings.
std::vector<Fix> defaultFixes(const FixGround& ground, const Finding& finding);
std::vector<Fix> formatFixes(const FixGround& ground, const Finding& finding);

} // namespace orvista

#pragma once

#include "sheets/SheetImport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvista::testing {

inline std::vector<std::string> errorTexts(const SheetErrors& errors) {
    std::vector<std::string> texts;
    for (const SheetError& error : errors.sorted())
        texts.push_back(errorText(error));
    return texts;
}

/// Of an import, which has no changes then.
inline std::vector<std::string> errorTexts(const SheetImport& import) {
    EXPECT_TRUE(import.errors.none() || import.changes.empty());
    return errorTexts(import.errors);
}

} // namespace orvista::testing

#pragma once

#include "check/Finding.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace orvista {

/// Collects what is found in one item. Findings are added in the order of their lines; errors beyond
/// maximumFindings of them, and others as well, are counted, but their sentences never written.
class FindingList {
public:
    /// Where in the item a finding is; see Place.
    struct Where {
        std::size_t line = 0;
        std::size_t column = 0;
        std::size_t length = 0;
    };

    explicit FindingList(Item item) : item_(item) {}

    /// \param sentence makes the finding's text (UTF-8)
    template <typename Sentence>
    void add(Code code, Where where, Sentence&& sentence) {
        count(code);
        // What stands on one line is put into order later.
        Listed& listed = ruleOf(code).severity == Severity::Error ? errors_ : others_;
        if (listed.count >= maximumFindings && listed.lastLine != where.line)
            return;
        listed = {listed.count + 1, where.line};
        findings_.list.push_back({{item_, where.line, where.column, where.length}, code, sentence()});
    }
    /// Findings that are known by their number alone.
    void count(Code code, std::size_t number = 1) {
        findings_.counts.add(ruleOf(code).severity, number);
        findings_.byCode[static_cast<std::size_t>(code)] += number;
    }

    /// All that was added to the lists, by line and column; where they are more than maximumFindings the
    /// errors come first.
    static Findings merged(std::vector<FindingList> lists);
    Findings sorted() &&;

private:
    /// What the list holds of the errors, or of the others.
    struct Listed {
        std::size_t count = 0;
        std::size_t lastLine = 0;
    };

    Item item_;
    Findings findings_;
    Listed errors_;
    Listed others_;
};

/// Appends what was found in a later item. Where they are more than maximumFindings the errors come first.
void append(Findings& findings, const Findings& later);

} // namespace orvista

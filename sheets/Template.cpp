#include "sheets/Template.h"

#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr std::size_t deepestSections = 16;

struct TemplatePart {
    enum Kind { Text, Value, Section, Inverted } kind;
    std::string text; ///< as it stands, or a name
    std::vector<TemplatePart> parts;
};

[[noreturn]] void failTemplate(std::size_t line, const std::string& why) {
    throw TemplateFault("line " + decimalText(line) + ": " + why);
}

class TemplateParser {
public:
    TemplateParser(std::string_view source, const TemplateValues& values)
        : source_(source), values_(values) {}

    std::vector<TemplatePart> parts() { return partsOf("", 1, false, 0); }

private:
    struct Tag {
        char sign; ///< blank for a value
        std::string name;
        std::size_t line;
    };

    std::vector<TemplatePart> partsOf(const std::string& section, std::size_t line, bool inRow,
                                      std::size_t depth);
    TemplatePart partOf(const Tag& tag, bool inRow, std::size_t depth);
    Tag nextTag(std::string& before);
    void takeWholeLine(std::string& before, std::size_t begin);
    std::size_t nextBraces() const;
    void goTo(std::size_t place);
    bool isRowName(const std::string& name) const {
        return std::ranges::find(values_.rowNames, name) != values_.rowNames.end();
    }

    std::string_view source_;
    const TemplateValues& values_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

std::size_t TemplateParser::nextBraces() const {
    std::size_t begin = std::min(source_.find("{{", at_), source_.size());
    while (source_.substr(begin).starts_with("{{{"))
        ++begin;
    return begin;
}

void TemplateParser::goTo(std::size_t place) {
    line_ += static_cast<std::size_t>(std::ranges::count(source_.substr(at_, place - at_), '\n'));
    at_ = place;
}

/// The tag at the place, which begins with two braces.
TemplateParser::Tag TemplateParser::nextTag(std::string& before) {
    const std::size_t begin = at_;
    const std::size_t line = line_;
    const std::size_t end = source_.find("}}", begin);
    if (end == std::string_view::npos)
        failTemplate(line, "{{ without }}");
    std::string_view inside = trimBlanksAndTabs(source_.substr(begin + 2, end - begin - 2));
    goTo(end + 2);
    Tag tag{' ', {}, line};
    if (!inside.empty() && std::string_view("#^/!").find(inside.front()) != std::string_view::npos) {
        tag.sign = inside.front();
        inside = trimBlanksAndTabs(inside.substr(1));
        takeWholeLine(before, begin);
    }
    tag.name = inside;
    return tag;
}

void TemplateParser::takeWholeLine(std::string& before, std::size_t begin) {
    const std::size_t lineBegin = begin == 0 ? 0 : source_.rfind('\n', begin - 1) + 1;
    const std::string_view indent = source_.substr(lineBegin, begin - lineBegin);
    if (indent.find_first_not_of(" \t") != std::string_view::npos)
        return;
    const std::size_t next = std::min(source_.find_first_not_of(" \t", at_), source_.size());
    const std::string_view rest = source_.substr(next);
    if (!rest.empty() && !rest.starts_with('\n') && !rest.starts_with("\r\n"))
        return;
    before.resize(before.size() - indent.size());
    goTo(next + (rest.empty() ? 0 : rest.starts_with('\n') ? 1 : 2));
}

TemplatePart TemplateParser::partOf(const Tag& tag, bool inRow, std::size_t depth) {
    const bool isRows = !(inRow && isRowName(tag.name)) && values_.lists.contains(tag.name);
    const bool isKnown = isRows || values_.texts.contains(tag.name) || (inRow && isRowName(tag.name));
    if (!isKnown)
        failTemplate(tag.line, quotation(tag.name) + (isRowName(tag.name) ? " stands in a list's rows only"
                                                                          : " is not a name known here"));
    if (tag.sign == ' ') {
        if (isRows)
            failTemplate(tag.line, quotation(tag.name) + " is a list: {{#" + tag.name + "}}");
        return {TemplatePart::Value, tag.name, {}};
    }
    if (isRows && inRow && tag.sign == '#')
        failTemplate(tag.line, quotation(tag.name) + " is a list within a list");
    if (depth == deepestSections)
        failTemplate(tag.line, "sections nested deeper than " + decimalText(deepestSections));
    return {tag.sign == '#' ? TemplatePart::Section : TemplatePart::Inverted, tag.name,
            partsOf(tag.name, tag.line, inRow || (isRows && tag.sign == '#'), depth + 1)};
}

std::vector<TemplatePart> TemplateParser::partsOf(const std::string& section, std::size_t line, bool inRow,
                                                  std::size_t depth) {
    std::vector<TemplatePart> parts;
    while (true) {
        const std::size_t begin = nextBraces();
        std::string before(source_.substr(at_, begin - at_));
        goTo(begin);
        if (begin == source_.size()) {
            if (depth > 0)
                failTemplate(line, "{{#" + section + "}} without {{/" + section + "}}");
            parts.push_back({TemplatePart::Text, std::move(before), {}});
            return parts;
        }
        const Tag tag = nextTag(before);
        parts.push_back({TemplatePart::Text, std::move(before), {}});
        if (tag.sign == '/') {
            if (depth == 0 || tag.name != section)
                failTemplate(tag.line, "{{/" + tag.name + "}} ends no section that began last");
            return parts;
        }
        if (tag.sign != '!')
            parts.push_back(partOf(tag, inRow, depth));
    }
}

class TemplateFilling {
public:
    explicit TemplateFilling(const TemplateValues& values) : values_(values) {}

    void fill(const std::vector<TemplatePart>& parts, const TemplateTexts* row);
    std::string text;

private:
    /// Nothing where the name is a list's.
    const std::string* textOf(const std::string& name, const TemplateTexts* row) const;
    void fillSection(const TemplatePart& part, const TemplateTexts* row);
    void append(const std::string& more);

    const TemplateValues& values_;
};

void TemplateFilling::append(const std::string& more) {
    if (text.size() + more.size() > mostFilledBytes)
        throw TemplateFault("what it makes is longer than " + decimalText(mostFilledBytes >> 20) + " MB");
    text += more;
}

const std::string* TemplateFilling::textOf(const std::string& name, const TemplateTexts* row) const {
    if (row != nullptr)
        if (const auto found = row->find(name); found != row->end())
            return &found->second;
    if (values_.lists.contains(name))
        return nullptr;
    return &values_.texts.find(name)->second;
}

void TemplateFilling::fillSection(const TemplatePart& part, const TemplateTexts* row) {
    const bool isInverted = part.kind == TemplatePart::Inverted;
    if (const std::string* const value = textOf(part.text, row)) {
        if (value->empty() == isInverted)
            fill(part.parts, row);
        return;
    }
    const auto& rows = values_.lists.find(part.text)->second;
    if (isInverted && rows.empty())
        fill(part.parts, row);
    if (!isInverted)
        for (const TemplateTexts& each : rows)
            fill(part.parts, &each);
}

void TemplateFilling::fill(const std::vector<TemplatePart>& parts, const TemplateTexts* row) {
    for (const TemplatePart& part : parts) {
        if (part.kind == TemplatePart::Text)
            append(part.text);
        else if (part.kind == TemplatePart::Value)
            append(*textOf(part.text, row));
        else
            fillSection(part, row);
    }
}

} // namespace

std::string filledTemplate(std::string_view source, const TemplateValues& values) {
    if (source.size() > mostTemplateBytes)
        throw TemplateFault("longer than " + decimalText(mostTemplateBytes >> 10) + " KB");
    const std::vector<TemplatePart> parts = TemplateParser(source, values).parts();
    TemplateFilling filling(values);
    filling.fill(parts, nullptr);
    return std::move(filling.text);
}

} // namespace orvista

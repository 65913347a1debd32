#include "tests/sheets/StructuredTextReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace orvista::testing {

namespace {

using namespace std::string_view_literals;

constexpr std::array keywords{"FUNCTION"sv,  "END_FUNCTION"sv, "PROGRAM"sv,      "END_PROGRAM"sv,  "VAR"sv,
                              "VAR_INPUT"sv, "VAR_GLOBAL"sv,   "VAR_EXTERNAL"sv, "END_VAR"sv,      "IF"sv,
                              "THEN"sv,      "ELSIF"sv,        "ELSE"sv,         "END_IF"sv,       "WHILE"sv,
                              "DO"sv,        "ARRAY"sv,        "END_WHILE"sv,    "OF"sv,           "NOT"sv,
                              "AND"sv,       "OR"sv,           "XOR"sv,          "MOD"sv,          "REAL"sv,
                              "BOOL"sv,      "DINT"sv,         "DWORD"sv,        "WORD"sv,         "TRUE"sv,
                              "FALSE"sv,     "ABS"sv,          "SHL"sv,          "SHR"sv,          "MAX"sv,
                              "MIN"sv,       "INT"sv,          "STRING"sv,       "DINT_TO_DWORD"sv};

char upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

std::string upper(std::string_view text) {
    std::string made(text);
    for (char& character : made)
        character = upper(character);
    return made;
}

bool isKeyword(std::string_view word) {
    const std::string folded = upper(word);
    return std::ranges::find(keywords, folded) != keywords.end();
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isWordCharacter(char character) {
    const char folded = upper(character);
    return (folded >= 'A' && folded <= 'Z') || isDigit(character) || character == '_';
}

class StTokens {
public:
    explicit StTokens(std::string_view text) : text_(text) {}

    std::vector<StToken> all() {
        while (skipBlanks(), at_ < text_.size())
            tokens_.push_back(next());
        tokens_.push_back({StToken::End, ""});
        return tokens_;
    }

private:
    void skipBlanks() {
        for (; at_ < text_.size(); ++at_) {
            if (text_[at_] == '\n' || (text_[at_] == '\r' && !text_.substr(at_).starts_with("\r\n")))
                throw StFault("a line that does not end in CR LF");
            if (text_[at_] == '\r')
                ++at_;
            else if (text_[at_] != ' ')
                return;
        }
    }

    StToken next() {
        if (text_.substr(at_).starts_with("(*"))
            return comment();
        if (isDigit(text_[at_]))
            return number();
        if (isWordCharacter(text_[at_]))
            return word();
        for (const std::string_view sign : {":=", "..", "<=", ">=", "<>"})
            if (text_.substr(at_).starts_with(sign))
                return {StToken::Sign, taken(2)};
        if (std::string_view(":;,()[]+-*/=<>").find(text_[at_]) == std::string_view::npos)
            throw StFault("a character that means nothing");
        return {StToken::Sign, taken(1)};
    }

    StToken comment() {
        const std::size_t end = text_.find("*)", at_ + 2);
        if (end == std::string_view::npos)
            throw StFault("a comment without an end");
        const std::string_view text = taken(end + 2 - at_);
        if (text.find("(*", 2) != std::string_view::npos)
            throw StFault("a comment within a comment");
        return {StToken::Comment, text};
    }

    StToken number() {
        std::size_t end = digitsFrom(at_);
        if (text_.substr(end).starts_with('.') && !text_.substr(end).starts_with("..")) {
            end = someDigitsFrom(end + 1);
            if (text_.substr(end).starts_with('E')) {
                const bool isSigned =
                    text_.substr(end + 1).starts_with('+') || text_.substr(end + 1).starts_with('-');
                end = someDigitsFrom(end + (isSigned ? 2 : 1));
            }
        }
        if (end < text_.size() && isWordCharacter(text_[end]))
            throw StFault("a number that goes on as a word");
        return {StToken::Number, taken(end - at_)};
    }

    StToken word() {
        std::size_t end = at_;
        while (end < text_.size() && isWordCharacter(text_[end]))
            ++end;
        const std::string_view word = taken(end - at_);
        if (word == "DWORD" && text_.substr(at_).starts_with("#16#")) {
            taken(4);
            end = at_;
            while (end < text_.size() && isWordCharacter(text_[end]))
                ++end;
            return {StToken::Bits, taken(end - at_)};
        }
        return {StToken::Word, word};
    }

    std::size_t digitsFrom(std::size_t at) const {
        while (at < text_.size() && isDigit(text_[at]))
            ++at;
        return at;
    }
    std::size_t someDigitsFrom(std::size_t at) const {
        const std::size_t end = digitsFrom(at);
        if (end == at)
            throw StFault("a number without digits");
        return end;
    }

    std::string_view taken(std::size_t size) {
        const std::string_view text = text_.substr(at_, size);
        at_ += size;
        return text;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<StToken> tokens_;
};

void require(bool holds, std::string_view fault, std::string_view of = {}) {
    if (!holds)
        throw StFault(std::string(fault) + std::string(of));
}

StValue narrowed(StValue value) {
    if (value.type == "REAL")
        value.number = static_cast<double>(static_cast<float>(value.number));
    return value;
}

StValue truth(bool isTrue) {
    return {"BOOL", isTrue ? 1.0 : 0.0};
}

std::uint32_t bitsOf(const StValue& value) {
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(value.number));
}

} // namespace

StReader::StReader(std::string text) : text_(std::move(text)), tokens_(StTokens(text_).all()) {
    file();
}

const StVariable& StReader::global(std::string_view name) const {
    const auto place = globalPlaces_.find(upper(name));
    if (place == globalPlaces_.end())
        throw StFault("no variable " + std::string(name));
    return globals_[place->second];
}

StVariable* StReader::globalOrNull(std::string_view name) {
    const auto place = globalPlaces_.find(upper(name));
    return place == globalPlaces_.end() ? nullptr : &globals_[place->second];
}

void StReader::set(std::string_view name, double value) {
    globalOrNull(name)->values.front().number = value;
}

const StToken& StReader::peek() {
    while (tokens_[at_].kind == StToken::Comment)
        ++at_;
    return tokens_[at_];
}

StToken StReader::take() {
    const StToken token = peek();
    if (token.kind != StToken::End)
        ++at_;
    return token;
}

bool StReader::accept(std::string_view text) {
    const bool isIt = peek().text == text && peek().kind != StToken::End;
    if (isIt)
        ++at_;
    return isIt;
}

void StReader::expect(std::string_view text) {
    if (!accept(text))
        throw StFault("no \"" + std::string(text) + "\" but \"" + std::string(peek().text) + "\"");
}

std::string_view StReader::identifier() {
    const StToken token = take();
    require(token.kind == StToken::Word && !isKeyword(token.text), "no name: ", token.text);
    require(token.text.find("__") == std::string_view::npos && !token.text.ends_with('_'),
            "a bad name: ", token.text);
    return token.text;
}

std::size_t StReader::whole() {
    const StToken token = take();
    require(token.kind == StToken::Number && std::ranges::all_of(token.text, isDigit), "no whole number");
    return std::stoul(std::string(token.text));
}

void StReader::file() {
    function();
    globalBlock();
    program();
    require(peek().kind == StToken::End, "something behind the program");
}

void StReader::function() {
    expect("FUNCTION");
    functionName_ = identifier();
    expect(":");
    own_.result = take().text;
    require(own_.result == "DWORD", "a function of another type");
    block("VAR_INPUT", locals_);
    for (const StVariable& parameter : locals_)
        own_.parameters.push_back(parameter.type);
    block("VAR", locals_);
    add(locals_, {functionName_, own_.result, {{own_.result}}, false, false, ""});
    functionScope_ = locals_;
    functionBody_ = at_;
    statements();
    expect("END_FUNCTION");
    locals_.clear();
}

void StReader::globalBlock() {
    expect("VAR_GLOBAL");
    while (true) {
        while (tokens_[at_].kind == StToken::Comment)
            commentsAlone_.push_back(tokens_[at_++].text);
        if (accept("END_VAR"))
            return;
        StVariable variable = declaration(true);
        if (tokens_[at_].kind == StToken::Comment)
            variable.comment = tokens_[at_++].text;
        require(upper(variable.name) != upper(functionName_), "the function's name again");
        if (!globalPlaces_.emplace(upper(variable.name), globals_.size()).second)
            throw StFault("a name twice: " + std::string(variable.name));
        globals_.push_back(std::move(variable));
    }
}

void StReader::program() {
    expect("PROGRAM");
    const std::string_view name = identifier();
    require(upper(name) != upper(functionName_), "the function's name again");
    require(globalOrNull(name) == nullptr, "a variable's name again");
    externals();
    inProgram_ = true;
    block("VAR", locals_);
    programScope_ = locals_;
    programBody_ = at_;
    statements();
    expect("END_PROGRAM");
}

void StReader::externals() {
    expect("VAR_EXTERNAL");
    while (!accept("END_VAR")) {
        const StVariable external = declaration(false);
        StVariable* const same = globalOrNull(external.name);
        require(same != nullptr && same->type == external.type &&
                    same->values.size() == external.values.size() && same->isArray == external.isArray &&
                    !same->isExternal,
                "no such global variable, or another type");
        same->isExternal = true;
    }
}

void StReader::block(std::string_view keyword, Scope& scope) {
    expect(keyword);
    while (!accept("END_VAR"))
        add(scope, declaration(true));
}

StVariable StReader::declaration(bool mayHaveInitial) {
    StVariable variable;
    variable.name = identifier();
    expect(":");
    std::size_t count = 1;
    if (accept("ARRAY")) {
        variable.isArray = true;
        expect("[");
        const std::size_t first = whole();
        expect("..");
        const std::size_t last = whole();
        require(first == 0 && last >= first, "bounds of an array");
        count = last + 1;
        expect("]");
        expect("OF");
    }
    variable.type = take().text;
    constexpr std::array types{"REAL"sv, "BOOL"sv, "DINT"sv, "DWORD"sv, "WORD"sv};
    require(std::ranges::find(types, variable.type) != types.end(), "no type: ", variable.type);
    variable.values.assign(count, {variable.type});
    if (mayHaveInitial && accept(":=")) {
        require(!variable.isArray, "a value for an array");
        variable.values.front() = initial(variable.type);
        variable.hasInitial = true;
    }
    expect(";");
    return variable;
}

StValue StReader::initial(std::string_view type) {
    const bool isNegative = accept("-");
    StValue value = literal(take());
    require(value.type == type, "a value of another type");
    require(!isNegative || type == "REAL", "a sign before no number");
    value.number = isNegative ? -value.number : value.number;
    return value;
}

void StReader::add(Scope& scope, StVariable variable) {
    for (const StVariable& other : scope)
        require(upper(other.name) != upper(variable.name), "a name twice: ", other.name);
    scope.push_back(std::move(variable));
}

bool StReader::atBlockEnd() {
    const std::string_view text = peek().text;
    return text.starts_with("END_") || text == "ELSE" || text == "ELSIF" || peek().kind == StToken::End;
}

void StReader::statements() {
    while (!atBlockEnd()) {
        if (accept("IF"))
            branches();
        else if (accept("WHILE"))
            loop();
        else
            assignment();
        expect(";");
    }
}

StVariable& StReader::variable(std::string_view name) {
    for (StVariable& local : locals_)
        if (local.name == name)
            return local;
    StVariable* const global = inProgram_ ? globalOrNull(name) : nullptr;
    if (global == nullptr || !global->isExternal)
        throw StFault("not declared: " + std::string(name));
    return *global;
}

void StReader::assignment() {
    StVariable& target = variable(identifier());
    std::size_t index = 0;
    if (target.isArray) {
        expect("[");
        index = whole();
        expect("]");
        require(index < target.values.size(), "beyond an array");
    }
    expect(":=");
    const std::string_view type = target.type;
    const StValue value = expression();
    require(value.type == type, "another value for a ", type);
    if (live_)
        target.values[index] = narrowed(value);
}

void StReader::branches() {
    const bool wasLive = live_;
    bool isOpen = wasLive;
    do {
        const StValue condition = expression();
        require(condition.type == "BOOL", "a condition that is none");
        expect("THEN");
        live_ = isOpen && condition.number != 0;
        isOpen = isOpen && condition.number == 0;
        statements();
        live_ = wasLive;
    } while (accept("ELSIF"));
    if (accept("ELSE")) {
        live_ = isOpen;
        statements();
        live_ = wasLive;
    }
    expect("END_IF");
}

void StReader::loop() {
    const bool wasLive = live_;
    const std::size_t begin = at_;
    while (true) {
        at_ = begin;
        const StValue condition = expression();
        require(condition.type == "BOOL", "a condition that is none");
        expect("DO");
        live_ = wasLive && condition.number != 0;
        const bool isAgain = live_;
        statements();
        live_ = wasLive;
        expect("END_WHILE");
        if (!isAgain)
            return;
    }
}

StValue StReader::expression() {
    StValue left = conjunction();
    while (accept("OR")) {
        const StValue right = conjunction();
        require(left.type == right.type && (left.type == "BOOL" || left.type == "DWORD"),
                "OR of other types");
        left.number = static_cast<double>(bitsOf(left) | bitsOf(right));
    }
    return left;
}

StValue StReader::conjunction() {
    StValue left = comparison();
    while (accept("AND")) {
        const StValue right = comparison();
        require(left.type == "BOOL" && right.type == "BOOL", "AND of other types");
        left = truth(left.number != 0 && right.number != 0);
    }
    return left;
}

StValue StReader::comparison() {
    const StValue left = sum();
    for (const std::string_view sign : {"=", "<>", "<", ">", "<=", ">="}) {
        if (!accept(sign))
            continue;
        const StValue right = sum();
        require(left.type == right.type, "unlike values compared");
        const double a = left.number;
        const double b = right.number;
        return truth(sign == "="    ? a == b
                     : sign == "<>" ? a != b
                     : sign == "<"  ? a < b
                     : sign == ">"  ? a > b
                     : sign == "<=" ? a <= b
                                    : a >= b);
    }
    return left;
}

StValue StReader::sum() {
    StValue left = product();
    while (peek().text == "+" || peek().text == "-") {
        const bool isMinus = take().text == "-";
        const StValue right = product();
        require(left.type == right.type && (left.type == "REAL" || left.type == "DINT"),
                "a sum of other types");
        left.number += isMinus ? -right.number : right.number;
        left = narrowed(left);
    }
    return left;
}

StValue StReader::product() {
    StValue left = unary();
    while (peek().text == "*" || peek().text == "/") {
        const bool isQuotient = take().text == "/";
        const StValue right = unary();
        require(left.type == "REAL" && right.type == "REAL", "a product of other types");
        left.number = isQuotient ? left.number / right.number : left.number * right.number;
        left = narrowed(left);
    }
    return left;
}

StValue StReader::unary() {
    if (!accept("NOT"))
        return primary();
    const StValue value = primary();
    require(value.type == "BOOL", "NOT of another type");
    return truth(value.number == 0);
}

StValue StReader::primary() {
    if (accept("(")) {
        const StValue value = expression();
        expect(")");
        return value;
    }
    const StToken token = take();
    if (token.kind != StToken::Word || token.text == "TRUE" || token.text == "FALSE")
        return literal(token);
    if (accept("("))
        return call(token.text);
    const StVariable& read = variable(token.text);
    require(!read.isArray, "an array in place of a value");
    return read.values.front();
}

StValue StReader::literal(const StToken& token) {
    if (token.text == "TRUE" || token.text == "FALSE")
        return truth(token.text == "TRUE");
    if (token.kind == StToken::Bits) {
        require(token.text.size() == 8, "bits of another length");
        return {"DWORD", static_cast<double>(std::stoul(std::string(token.text), nullptr, 16))};
    }
    require(token.kind == StToken::Number, "no value: ", token.text);
    const bool isReal = token.text.find('.') != std::string_view::npos;
    float value = 0;
    std::from_chars(token.text.data(), token.text.data() + token.text.size(), value);
    require(std::isfinite(value), "beyond REAL");
    return {isReal ? "REAL" : "DINT",
            isReal ? static_cast<double>(value) : std::stod(std::string(token.text))};
}

StValue StReader::call(std::string_view name) {
    std::vector<StValue> arguments;
    do
        arguments.push_back(expression());
    while (accept(","));
    expect(")");
    std::string types;
    for (const StValue& argument : arguments)
        types.append(" ").append(argument.type);
    const StValue& first = arguments.front();
    if (name == functionName_ && inProgram_) {
        require(types == " REAL", "a function of another kind of value");
        return live_ ? callOwn(arguments) : StValue{own_.result};
    }
    static const std::map<std::string_view, std::pair<std::string_view, std::string_view>> functions{
        {"ABS", {" REAL", "REAL"}},
        {"REAL_TO_DINT", {" REAL", "DINT"}},
        {"DINT_TO_DWORD", {" DINT", "DWORD"}},
        {"DWORD_TO_WORD", {" DWORD", "WORD"}},
        {"SHL", {" DWORD DINT", "DWORD"}},
        {"SHR", {" DWORD DINT", "DWORD"}}};
    const auto function = functions.find(name);
    require(function != functions.end(), "no function ", name);
    require(function->second.first == types, "no function of", types);
    const double number = name == "ABS" ? std::abs(first.number)
                          : name == "REAL_TO_DINT"
                              ? (std::isfinite(first.number) ? std::nearbyint(first.number) : 0)
                          : name == "DINT_TO_DWORD" ? static_cast<double>(bitsOf(first))
                          : name == "DWORD_TO_WORD" ? static_cast<double>(bitsOf(first) & 0xFFFFU)
                          : name == "SHL" ? static_cast<double>(bitsOf(first) << bitsOf(arguments[1]))
                                          : static_cast<double>(bitsOf(first) >> bitsOf(arguments[1]));
    return {function->second.second, number};
}

StValue StReader::callOwn(const std::vector<StValue>& arguments) {
    const std::size_t back = at_;
    Scope caller = std::move(locals_);
    locals_ = functionScope_;
    locals_.front().values = arguments;
    inProgram_ = false;
    at_ = functionBody_;
    statements();
    const StValue result = variable(functionName_).values.front();
    inProgram_ = true;
    locals_ = std::move(caller);
    at_ = back;
    return result;
}

void StReader::run() {
    locals_ = programScope_;
    at_ = programBody_;
    live_ = true;
    statements();
    live_ = false;
}

} // namespace orvista::testing

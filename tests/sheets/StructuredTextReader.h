#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Reads and runs the part of IEC 61131-3 Structured Text that our lists are written in. Nothing here is
/// shared with the program.
namespace orvista::testing {

class StFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct StToken {
    enum Kind { Word, Number, Bits, Sign, Comment, End } kind;
    std::string_view text; ///< of the reader's own
};

struct StValue {
    std::string_view type; ///< "REAL", "BOOL", "DINT", "DWORD", "WORD"
    double number = 0;
    bool operator==(const StValue&) const = default;
};

struct StVariable {
    std::string_view name;
    std::string_view type;
    std::vector<StValue> values; ///< one, or those of an array
    bool isArray = false;
    bool hasInitial = false;
    std::string_view comment;
    bool isExternal = false; ///< of a global variable: whether the program may use it
};

class StReader {
public:
    /// \throws StFault for anything that the grammar or the types do not allow
    explicit StReader(std::string text);
    StReader(const StReader&) = delete;
    StReader& operator=(const StReader&) = delete;

    void set(std::string_view name, double value);
    /// Runs the program once.
    void run();
    /// In the order of the declarations.
    const std::vector<StVariable>& globals() const { return globals_; }
    const std::vector<std::string_view>& commentsAlone() const { return commentsAlone_; }
    const StVariable& global(std::string_view name) const;

private:
    using Scope = std::vector<StVariable>;
    struct Signature {
        std::vector<std::string_view> parameters;
        std::string_view result;
    };

    const StToken& peek();
    StToken take();
    bool accept(std::string_view text);
    void expect(std::string_view text);
    std::string_view identifier();
    std::size_t whole();

    void file();
    void function();
    void globalBlock();
    void program();
    void externals();
    void block(std::string_view keyword, Scope& scope);
    StVariable declaration(bool mayHaveInitial);
    StValue initial(std::string_view type);
    static void add(Scope& scope, StVariable variable);
    StVariable* globalOrNull(std::string_view name);

    void statements();
    bool atBlockEnd();
    void assignment();
    void branches();
    void loop();
    StVariable& variable(std::string_view name);

    StValue expression();
    StValue conjunction();
    StValue comparison();
    StValue sum();
    StValue product();
    StValue unary();
    StValue primary();
    StValue literal(const StToken& token);
    StValue call(std::string_view name);
    StValue callOwn(const std::vector<StValue>& arguments);

    const std::string text_; ///< what everything else points into
    std::vector<StToken> tokens_;
    std::size_t at_ = 0;
    bool live_ = false; ///< whether what is read is carried out, too
    Scope globals_;
    std::map<std::string, std::size_t> globalPlaces_; ///< by their names in capitals
    Scope locals_;
    std::vector<std::string_view> commentsAlone_;
    Signature own_;
    std::string_view functionName_;
    Scope functionScope_;
    std::size_t functionBody_ = 0;
    std::size_t programBody_ = 0;
    Scope programScope_;
    bool inProgram_ = false;
};

} // namespace orvista::testing

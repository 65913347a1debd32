#pragma once

#include "model/FileRemarks.h"
#include "model/Item.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <string>
#include <string_view>

/// What the readers of blocks tell of them while they read: which began, what they stored, which lines were
/// no part of them.
namespace orvista {

/// A block from its first line on. It is closed by its end, and open when it has stored nothing.
class Block {
public:
    explicit Block(TableReading& reading) : reading_(reading) {}
    /// Another one begins; the one before it can store nothing any more.
    void begin(std::string_view name, std::size_t line);
    void store() { stored_ = true; }
    void close() { inside_ = false; }
    /// The file's end.
    void finish();
    /// A block that stores nothing, whatever follows.
    void remarkOpen(std::string_view name, std::size_t line);

    bool isInside() const { return inside_; }
    bool hasStored() const { return stored_; }
    const std::string& name() const { return name_; }
    std::size_t line() const { return line_; }

private:
    TableReading& reading_;
    std::string name_;
    std::size_t line_ = 0;
    bool begun_ = false;
    bool inside_ = false;
    bool stored_ = false;
};

class MessageRemarks {
public:
    MessageRemarks(Kind kind, TableReading& reading) : kind_(kind), reading_(reading), block_(reading) {}
    void begin(std::string_view name, std::size_t line) { block_.begin(name, line); }
    /// The block's text goes into that row.
    void store(std::size_t row, std::size_t line);
    /// Any other line, trimmed, while there are rows left.
    void pass(std::string_view line, std::size_t number);
    /// A line, trimmed, after the last row was filled.
    void passBehind(std::string_view line, std::size_t number);
    void finish(std::size_t filled);

private:
    void remarkStray(std::string_view line, std::size_t number);

    Kind kind_;
    TableReading& reading_;
    Block block_;
    bool inExtra_ = false; ///< within a block that has no row
};

class VariableRemarks {
public:
    explicit VariableRemarks(TableReading& reading) : reading_(reading), block_(reading) {}
    void begin(std::string_view name, std::size_t line) { block_.begin(name, line); }
    /// The block's end, and what it came to.
    /// \param isAtItsAddress false where the row's address is another one than the block's
    void store(Item item, bool isAtItsAddress);
    void endWithoutRow();
    void endWithoutType() { block_.close(); } // open as long as it has stored nothing
    /// A field was set.
    void takeField(std::size_t number);
    /// Any other line, trimmed.
    void pass(std::string_view line, std::size_t number);
    void finish();

private:
    TableReading& reading_;
    Block block_;
    std::bitset<floatVariableCount> floats_;
    std::bitset<booleanVariableCount> booleans_;
};

/// The addresses of the map: which of them were taken.
class AddressRemarks {
public:
    static constexpr std::array<std::string_view, 3> names{"AnalogInput", "DigitalInput", "AlertMessage"};

    explicit AddressRemarks(TableReading& reading) : reading_(reading) {}
    /// \param isNumber whether a number stood there
    void take(std::size_t which, bool isNumber) { taken_[which] = isNumber; }
    void pass(std::string_view line, std::size_t number);
    void finish();

private:
    TableReading& reading_;
    std::bitset<names.size()> taken_;
};

} // namespace orvista

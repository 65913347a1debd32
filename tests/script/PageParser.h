#pragma once

#include "script/MessagePage.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvista::testing {

/// What a page says, as choices of the wizard. What a page does not say (a speed without effect, the delay of
/// a blinking page, rows without field, the font of a bitmap) is left as a fresh form has it.
struct ReadPage {
    MessageForm form;         ///< txtText is the quoted text, txtPath the bitmap's name
    std::vector<int> columns; ///< of the fields, in characters
};

/// Reads pages back, knowing the language only: it shares no table with the generator.
class PageParser {
public:
    static ReadPage read(const std::string& page) { return PageParser(page).readPage(); }

private:
    explicit PageParser(const std::string& page) : rest_(page) {}

    ReadPage readPage() {
        expect("CLEAR\r\n");
        read_.form.cbInEffect = read_.form.cbOutEffect = 0;
        if (take("IMG 0 0 ")) {
            read_.form.bitmap = true;
            readColours(read_.form.cbFgClr, read_.form.cbBgClr);
            read_.form.txtPath = rest_.substr(0, rest_.find("\r\n"));
            rest_.erase(0, read_.form.txtPath.size());
        } else {
            readText();
            while (rest_.starts_with("\r\nDISPVAR") || rest_.starts_with("\r\nDATE") ||
                   rest_.starts_with("\r\nTIME"))
                readField();
        }
        if (take("\r\nIN "))
            readEffect(read_.form.cbInEffect, read_.form.cbIFSpeed);
        readSpecialEffect();
        if (take("\r\nOUT "))
            readEffect(read_.form.cbOutEffect, read_.form.cbOFSpeed);
        expectEnd();
        return read_;
    }

    void readText() {
        const bool small = take("TEXTS 0 5 ");
        if (!small)
            expect("TEXT 0 0 ");
        read_.form.cbFont = small ? 0 : 1;
        readColours(read_.form.cbFgClr, read_.form.cbBgClr);
        expect("\"");
        const std::size_t lineLength = rest_.find("\r\n");
        const std::size_t closing = rest_.rfind('"', lineLength);
        if (closing == std::string::npos || closing + 1 != lineLength)
            throw std::runtime_error("the text is not closed: " + rest_);
        read_.form.txtText = rest_.substr(0, closing);
        rest_.erase(0, closing + 1);
    }

    void readField() {
        FieldChoice& field = read_.form.fields.at(read_.columns.size());
        expect("\r\n");
        const std::string command = word();
        const bool small = read_.form.cbFont == 0;
        const int x = number();
        expect(small ? "5 " : "0 ");
        if (x % (small ? 6 : 8) != 0)
            throw std::runtime_error("a field between two columns");
        read_.columns.push_back(x / (small ? 6 : 8));
        readColours(field.cbVarFgClr, field.cbVarBgClr);
        if (command == (small ? "DATES" : "DATE"))
            field.cbVar = 96;
        else if (command == (small ? "TIMES" : "TIME"))
            field.cbVar = 97;
        else if (command == (small ? "DISPVARS" : "DISPVAR"))
            field.cbVar = variable();
        else
            throw std::runtime_error("no field command: " + command);
    }

    /// Position of "CoilVar" and 1 to 32, or "RegVar" and 1 to 64, at the end of a line.
    std::size_t variable() {
        const std::string name = rest_.substr(0, rest_.find("\r\n"));
        rest_.erase(0, name.size());
        for (std::size_t i = 1; i <= 32; ++i)
            if (name == "CoilVar" + std::to_string(i))
                return i - 1;
        for (std::size_t i = 1; i <= 64; ++i)
            if (name == "RegVar" + std::to_string(i))
                return i + 31;
        throw std::runtime_error("no variable: " + name);
    }

    void readColours(std::size_t& foreground, std::size_t& background) {
        foreground = choice({"RED ", "GREEN ", "ORANGE ", "BLACK "});
        background = choice({"RED ", "GREEN ", "ORANGE ", "BLACK "});
    }

    void readEffect(std::size_t& effect, std::size_t& speed) {
        effect = 1 + choice({"GO-LEFT 1 ", "GO-RIGHT 1 ", "GO-UP 1 ", "GO-DOWN 1 ", "FADE "});
        speed = choice({"100", "50", "25"});
    }

    void readSpecialEffect() {
        if (take("\r\nACT BLINK 4 75\r\nACT STILL 500")) {
            read_.form.cbSpEffect = 1;
            return;
        }
        expect("\r\nACT STILL ");
        const std::string digits = rest_.substr(0, rest_.find("\r\n"));
        rest_.erase(0, digits.size());
        read_.form.cbSpEffect = 0;
        for (std::size_t seconds = 1; seconds <= 10; ++seconds) {
            if (digits == std::to_string(seconds) + "000") {
                read_.form.cbDelay = seconds - 1;
                return;
            }
        }
        throw std::runtime_error("no hold time: " + digits);
    }

    std::size_t choice(const std::vector<std::string>& literals) {
        const auto found = std::find_if(literals.begin(), literals.end(),
                                        [this](const std::string& each) { return take(each); });
        if (found == literals.end())
            throw std::runtime_error("none of the expected words: " + rest_);
        return static_cast<std::size_t>(found - literals.begin());
    }

    /// The next word and the blank after it.
    std::string word() {
        std::string next = rest_.substr(0, rest_.find(' '));
        rest_.erase(0, next.size());
        expect(" ");
        return next;
    }

    int number() {
        const std::string digits = word();
        int value = -1;
        std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (std::to_string(value) != digits)
            throw std::runtime_error("no plain number: " + digits);
        return value;
    }

    bool take(const std::string& literal) {
        if (!rest_.starts_with(literal))
            return false;
        rest_.erase(0, literal.size());
        return true;
    }

    void expect(const std::string& literal) {
        if (!take(literal))
            throw std::runtime_error("expected " + literal + " at " + rest_);
    }

    void expectEnd() const {
        if (!rest_.empty())
            throw std::runtime_error("more after the page: " + rest_);
    }

    std::string rest_;
    ReadPage read_;
};

} // namespace orvista::testing

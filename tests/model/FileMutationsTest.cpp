#include "model/Bytes.h"
#include "model/FileRemarks.h"
#include "model/ProjectFile.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

/// What opening loses or moves never goes without a remark. Whether it does is judged by a reader that knows
/// only how our files are written.
namespace orvista {
namespace {

using namespace orvista::testing;

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text) {
    Lines lines;
    std::string line;
    for (const char c : text) {
        if (c == '\n') {
            lines.push_back(line);
            line.clear();
        } else if (c != '\r') {
            line += c;
        }
    }
    if (!line.empty())
        lines.push_back(line);
    return lines;
}

std::string textOf(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

std::string trimmed(const std::string& line) {
    const auto first = line.find_first_not_of(' ');
    return first == std::string::npos ? "" : line.substr(first, line.find_last_not_of(' ') + 1 - first);
}

/// The fields of an opened project, by the names under which a file holds them.
std::map<std::string, std::string> opened(const Project& project) {
    std::map<std::string, std::string> fields{
        {"IP", project.IP},
        {"SerialPort", project.SerialPort},
        {"AnalogInput", std::to_string(project.AnalogInput)},
        {"DigitalInput", std::to_string(project.DigitalInput)},
        {"AlertMessage", std::to_string(project.AlertMessage)},
    };
    const auto addMessages = [&fields](const auto& messages, const std::string& word) {
        for (std::size_t i = 0; i < messages.size(); ++i)
            fields[word + std::to_string(i + 1)] = messages[i];
    };
    addMessages(project.STDMSG, "STDMSG");
    addMessages(project.ALTMSG, "ALTMSG");
    for (std::size_t i = 0; i < project.RegVar.size(); ++i) {
        const std::string name = "RegVar" + std::to_string(i + 1) + " ";
        fields[name + "type"] = "float";
        fields[name + "address"] = std::to_string(project.AnalogInput + 2 * static_cast<int>(i));
        fields[name + "default"] = project.RegVar[i].defaultValue;
        fields[name + "width"] = project.RegVar[i].width;
        fields[name + "precision"] = project.RegVar[i].precision;
    }
    for (std::size_t i = 0; i < project.CoilVar.size(); ++i) {
        const std::string name = "CoilVar" + std::to_string(i + 1) + " ";
        fields[name + "type"] = "bit";
        fields[name + "address"] = std::to_string(project.DigitalInput + static_cast<int>(i));
        fields[name + "default"] = project.CoilVar[i].defaultValue;
        fields[name + "ON"] = '"' + project.CoilVar[i].onText + '"';
        fields[name + "OFF"] = '"' + project.CoilVar[i].offText + '"';
    }
    return fields;
}

/// Whether everything that stands in the file is where it belongs in the project.
class Judge {
public:
    Judge(const Lines& lines, const Project& project) : fields_(opened(project)) {
        for (const std::string& line : lines)
            see(trimmed(line));
        leave();
    }
    bool isKept() const { return kept_; }

private:
    void see(const std::string& line) {
        const std::string word = line.substr(0, line.find(' '));
        const std::string value = trimmed(line.substr(word.size()));
        if (line.empty()) {
            return;
        } else if (word == "ENDMSG" || word == "ENDVAR") { // one more holds nothing
            if (!message_.empty())
                expect(message_, text_);
            message_.clear();
            variable_.clear();
        } else if (word.front() == '[') {
            leave();
        } else if (word == "DEFMSG" || word == "DEFVAR") {
            leave();
            text_.clear();
            (word == "DEFMSG" ? message_ : variable_) = value.empty() ? "?" : value;
            kept_ = kept_ && !value.empty();
        } else if (!message_.empty()) {
            text_ += line + "\r\n";
        } else {
            expect(variable_.empty() ? word : variable_ + " " + word, value);
        }
    }
    /// A block without its end is not whole, whatever the project makes of it.
    void leave() {
        kept_ = kept_ && message_.empty() && variable_.empty();
        message_.clear();
        variable_.clear();
    }
    void expect(const std::string& name, const std::string& value) {
        const auto field = fields_.find(name);
        kept_ = kept_ && field != fields_.end() && field->second == value;
    }

    std::map<std::string, std::string> fields_;
    std::string message_;
    std::string variable_;
    std::string text_;
    bool kept_ = true;
};

/// A project in which no two items say the same.
Project variedProject() {
    Project project;
    project.IP = "127.0.0.7";
    project.SerialPort = "COM7";
    project.AnalogInput = 1000;
    project.DigitalInput = 2000;
    project.AlertMessage = 3000;
    project.RegularMessage = 3020;
    for (std::size_t i = 0; i < project.RegVar.size(); ++i) {
        project.RegVar[i].defaultValue = std::to_string(i) + ".5";
        project.RegVar[i].width = std::to_string(8 + i % 5);
        project.RegVar[i].precision = std::to_string(i % 3);
    }
    for (std::size_t i = 0; i < project.CoilVar.size(); ++i) {
        project.CoilVar[i].defaultValue = i % 2 == 0 ? "1" : "0";
        project.CoilVar[i].onText = "on " + std::to_string(i);
        project.CoilVar[i].offText = "off " + std::to_string(i);
    }
    const auto fill = [](auto& messages, const std::string& word) {
        for (std::size_t i = 0; i < messages.size(); ++i) {
            messages[i] = "CLEAR\r\nTEXT " + word + std::to_string(i);
            if (i % 4 == 0)
                messages[i] = word + std::to_string(i); // of a single line
        }
    };
    fill(project.STDMSG, "regular ");
    fill(project.ALTMSG, "emergency ");
    return project;
}

class FileMutations : public ::testing::Test {
protected:
    FileMutations() {
        Project project = variedProject();
        // What is read where a section is missing differs from what the file held.
        project.STDMSG.fill("OTHER");
        EXPECT_EQ(DocMgrModule::SaveProject(folder.path(), "OTHER", project, context),
                  DocMgrModule::SaveOutcome::Saved);
        MemorySink sink;
        DocMgrModule::writeProjectFile(sink, variedProject());
        whole = sink.bytes();
    }
    FileRemarks open(const std::string& bytes, Project& project) {
        writeBytes(folder.file("P.orx"), bytes);
        FileRemarks remarks;
        DocMgrModule::readProjectWithoutWriting(folder.file("P.orx"), project, context, &remarks);
        return remarks;
    }
    /// \returns whether the file was found to lose or move something
    bool judge(const std::string& bytes, const std::string& what) {
        Project project;
        const bool isClean = open(bytes, project).list().empty();
        const bool isKept = Judge(linesOf(bytes), project).isKept();
        EXPECT_TRUE(isKept || !isClean) << what;
        return !isKept;
    }

    TemporaryFolder folder;
    PathRules rules = PathRules::native();
    ScriptedMessages messages;
    DocMgrModule::FileContext context{rules, messages};
    std::string whole;
};

TEST_F(FileMutations, WhatWasSavedIsKeptAndClean) {
    Project project;
    EXPECT_TRUE(open(whole, project).list().empty());
    EXPECT_TRUE(Judge(linesOf(whole), project).isKept());
}

TEST_F(FileMutations, FilesThatAreCutOffAreNeverClean) {
    std::size_t lost = 0;
    for (std::size_t size = 0; size + 2 < whole.size(); size += 97) {
        lost += judge(whole.substr(0, size), "cut at " + std::to_string(size)) ? 1 : 0;
        Project project;
        EXPECT_FALSE(open(whole.substr(0, size), project).list().empty()) << size;
    }
    EXPECT_GT(lost, 100U);
}

TEST_F(FileMutations, LinesThatAreDoubledDroppedOrSwapped) {
    const Lines lines = linesOf(whole);
    std::size_t lost = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string where = " line " + std::to_string(i + 1) + ": " + lines[i];
        const auto place = static_cast<Lines::difference_type>(i);
        Lines other = lines;
        other.insert(other.begin() + place, lines[i]);
        lost += judge(textOf(other), "doubled" + where) ? 1 : 0;
        other = lines;
        other.erase(other.begin() + place);
        lost += judge(textOf(other), "dropped" + where) ? 1 : 0;
        other = lines;
        if (i + 1 < lines.size())
            std::swap(other[i], other[i + 1]);
        lost += judge(textOf(other), "swapped" + where) ? 1 : 0;
    }
    EXPECT_GT(lost, 500U);
}

/// A text as it comes from the boxes of the editor, whatever is typed there.
std::string anyText(std::mt19937& random, std::size_t longest) {
    static const std::vector<std::string> words{
        "DEFVAR", "ENDVAR", "[CONFI",  "default", "\"", "\xE4",  "0",    "-1.5", " ",
        "\t",     "IP",     "<<<<<<<", "=======", "x",  "FLOAT", "\x1A", "[x]",  "\xEF\xBB\xBF"};
    std::string text;
    for (std::size_t n = random() % (longest + 1); n > 0; --n)
        text += words[random() % words.size()];
    return text;
}

std::string anyScript(std::mt19937& random) {
    static const std::vector<std::string> lines{"CLEAR",
                                                "TEXT 0 0 RED BLACK \"a\"",
                                                "",
                                                "  DISPVAR RegVar1",
                                                "ACT STILL 1000",
                                                "[MODBUS.ADR] ;",
                                                "<<<<<<< ours",
                                                "=======",
                                                "; EN DMSG"};
    std::string script = random() % 3 == 0 ? "" : "CLEAR";
    for (std::size_t n = script.empty() ? 0 : random() % 5; n > 0; --n)
        script += "\r\n" + (random() % 4 == 0 ? anyText(random, 3) : lines[random() % lines.size()]);
    return script;
}

Project anyProject(std::mt19937& random) {
    Project project;
    const auto address = [&random] { return static_cast<std::int32_t>(random() % 70000) - 2000; };
    project.AnalogInput = address();
    project.DigitalInput = address();
    project.AlertMessage = random() % 50 == 0 ? 2147483627 : address();
    project.RegularMessage = address();
    project.IP = anyText(random, 2);
    project.SerialPort = anyText(random, 2);
    for (int n = 0; n < 8; ++n) {
        project.RegVar[random() % 64] = {"", anyText(random, 3), anyText(random, 2), anyText(random, 2)};
        project.CoilVar[random() % 32] = {"", anyText(random, 2), anyText(random, 3), anyText(random, 3)};
        project.STDMSG[random() % 40] = anyScript(random);
        project.ALTMSG[random() % 20] = anyScript(random);
    }
    return project;
}

TEST_F(FileMutations, WhatTheEditorSavedGivesNone) {
    std::mt19937 random(20261122);
    for (int n = 0; n < 10000 && !HasFailure(); ++n) {
        MemorySink sink;
        DocMgrModule::writeProjectFile(sink, anyProject(random));
        Project project;
        const FileRemarks remarks = open(sink.bytes(), project);
        EXPECT_TRUE(remarks.list().empty())
            << "project " << n << ", kind " << static_cast<int>(remarks.list().front().kind) << " at line "
            << remarks.list().front().line;
    }
    EXPECT_TRUE(messages.shown.empty());
}

} // namespace
} // namespace orvista

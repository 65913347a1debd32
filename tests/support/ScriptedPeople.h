#pragma once

#include "model/People.h"

#include <deque>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvista::testing {

/// Records every message and answers questions from a script. An unscripted question fails loudly: it
/// throws, since a test that did not expect a question must not pass on a default.
class ScriptedMessages final : public Messages {
public:
    struct Shown {
        MessageIcon icon;
        std::string text;
        bool operator==(const Shown&) const = default;
    };

    void show(MessageIcon icon, const std::string& text) override { shown.push_back({icon, text}); }
    bool askYesNo(const std::string& text) override { return answer(text) == Answer::Yes; }
    Answer askYesNoCancel(const std::string& text) override { return answer(text); }

    std::vector<Shown> shown;
    std::vector<std::string> asked;
    std::deque<Answer> answers;

private:
    Answer answer(const std::string& text) {
        asked.push_back(text);
        if (answers.empty())
            throw std::logic_error("unexpected question: " + text);
        const Answer next = answers.front();
        answers.pop_front();
        return next;
    }
};

/// Hands out scripted choices; without one every dialog counts as cancelled.
class ScriptedChooser final : public ProjectChooser {
public:
    StartupChoice chooseAtStartup() override {
        ++startupsShown;
        return atStartup;
    }
    std::optional<ChosenProject> chooseNewProject(const std::string& caption) override {
        newProjectCaptions.push_back(caption);
        return take(newProjects);
    }
    std::optional<ChosenProject> chooseExistingProject(const std::string& caption) override {
        existingProjectCaptions.push_back(caption);
        ++existingAsked;
        return take(existingProjects);
    }
    std::optional<std::string> chooseSaveAsPath(const std::string& proposedName) override {
        proposedNames.push_back(proposedName);
        return take(saveAsPaths);
    }

    StartupChoice atStartup = StartupChoice::Cancelled;
    int startupsShown = 0;
    int existingAsked = 0;
    std::vector<std::string> newProjectCaptions;
    std::vector<std::string> existingProjectCaptions;
    std::vector<std::string> proposedNames;
    std::deque<ChosenProject> newProjects;
    std::deque<ChosenProject> existingProjects;
    std::deque<std::string> saveAsPaths;

private:
    template <typename Choice>
    static std::optional<Choice> take(std::deque<Choice>& script) {
        if (script.empty())
            return std::nullopt;
        Choice next = script.front();
        script.pop_front();
        return next;
    }
};

} // namespace orvista::testing

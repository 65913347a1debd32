#include "console/Projects.h"

#include "console/CommandFailure.h"
#include "model/ProjectFile.h"
#include "model/Text.h"

namespace orvista::console {

namespace {

/// Keeps the first thing that the core has to say: what follows is the same trouble again.
class FirstMessage final : public Messages {
public:
    void show(MessageIcon /*icon*/, const std::string& text) override {
        if (text_.empty())
            text_ = text;
    }
    bool askYesNo(const std::string& /*text*/) override { return false; }
    Answer askYesNoCancel(const std::string& /*text*/) override { return Answer::Cancel; }

    bool any() const { return !text_.empty(); }
    /// With the project's path, which a system's own description does not have.
    std::string about(const std::string& path) const {
        const auto folder = PathRules::native().split(path);
        const bool namesFile = text_.find(folder ? folder->folder : path) != std::string::npos;
        return namesFile ? text_ : path + ": " + text_;
    }

private:
    std::string text_;
};

} // namespace

Project readProject(const std::string& path) {
    const PathRules paths = PathRules::native();
    FirstMessage message;
    Project project;
    const bool isRead = DocMgrModule::readProjectWithoutWriting(path, project, {paths, message});
    if (!isRead || message.any())
        throw CommandFailure(ExitStatus::Unusable, message.about(path));
    return project;
}

void saveProject(const std::string& path, const Project& project) {
    expectProjectName(path);
    const PathRules paths = PathRules::native();
    const auto parts = paths.split(path).value_or(SplitPath{".", path});
    FirstMessage message;
    const auto outcome = DocMgrModule::SaveProject(parts.folder, DocMgrModule::projectNameOfFile(parts.name),
                                                   project, {paths, message});
    if (outcome != DocMgrModule::SaveOutcome::Saved)
        throw CommandFailure(ExitStatus::Found, message.about(path));
}

void expectProjectName(const std::string& path) {
    if (!endsWithIgnoringCase(path, DocMgrModule::projectExtension))
        throw CommandFailure(ExitStatus::Unusable, path + " does not end in .orx");
}

} // namespace orvista::console

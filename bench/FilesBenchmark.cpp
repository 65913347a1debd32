#include "bench/Pair.h"
#include "check/FileFindings.h"
#include "compare/DisplayContents.h"
#include "model/BitmapName.h"
#include "model/DeviceFiles.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <map>
#include <stdexcept>

/// Saving and opening a project, beside the same bytes moved by plain system calls.
namespace orvista::bench {
namespace {

using DocMgrModule::Durability;

constexpr const char* projectName = "PLANT";
constexpr std::size_t megabyte = 1024 * 1024;

void writeWhole(const std::string& path, std::string_view bytes, Durability durability) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0)
            throw std::runtime_error("write failed");
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    if (durability == Durability::OnDisk && ::fsync(file) != 0)
        throw std::runtime_error("fsync failed");
    ::close(file);
}

void readWhole(const std::string& path, std::string& bytes) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    for (std::size_t size = 0; size < bytes.size();) {
        const ssize_t count = ::read(file, bytes.data() + size, bytes.size() - size);
        if (count <= 0)
            throw std::runtime_error("read failed");
        size += static_cast<std::size_t>(count);
    }
    ::close(file);
}

/// A saved project in a folder of its own, and the bytes of its files.
class SavedProject {
public:
    explicit SavedProject(Project project) : project_(std::move(project)) {
        save();
        open();
        remember("PLANT.orx");
        for (const DeviceFile* const file : deviceFiles)
            remember(std::string(file->name));
    }

    void save() {
        if (DocMgrModule::SaveProject(folder_.path(), projectName, project_, context_) !=
            DocMgrModule::SaveOutcome::Saved)
            throw std::runtime_error("save failed");
    }

    void open() {
        Project project;
        if (!DocMgrModule::ReadProject(folder_.file("PLANT.orx"), project, context_))
            throw std::runtime_error("open failed");
        benchmark::DoNotOptimize(project);
    }

    /// What a check does with the project file; within a millisecond of the processor for the example.
    void judge() {
        Project project;
        FileRemarks remarks;
        if (!DocMgrModule::readProjectWithoutWriting(folder_.file("PLANT.orx"), project, context_, &remarks))
            throw std::runtime_error("open failed");
        benchmark::DoNotOptimize(fileFindings(remarks));
    }

    void readProjectFile() { readWhole(folder_.file("PLANT.orx"), files_.at(folder_.file("PLANT.orx"))); }

    void writeEveryFile() const {
        for (const auto& [path, bytes] : files_)
            writeWhole(path, bytes, Durability::OnDisk);
    }

    /// What opening moves: the project file in, the five device files out, four of them in again.
    void moveBytesOfOpening() {
        readWhole(folder_.file("PLANT.orx"), files_.at(folder_.file("PLANT.orx")));
        for (const DeviceFile* const file : deviceFiles)
            writeWhole(folder_.file(std::string(file->name)),
                       files_.at(folder_.file(std::string(file->name))), Durability::Cached);
        for (const DeviceFile* const file : deviceFiles)
            if (file->Read != nullptr)
                readWhole(folder_.file(std::string(file->name)),
                          files_.at(folder_.file(std::string(file->name))));
    }

private:
    void remember(const std::string& name) {
        files_[folder_.file(name)] = testing::fileBytes(folder_.file(name));
    }

    testing::TemporaryFolder folder_;
    PathRules paths_ = PathRules::native();
    testing::ScriptedMessages messages_;
    DocMgrModule::FileContext context_{paths_, messages_};
    Project project_;
    std::map<std::string, std::string> files_;
};

/// `bytes` of message text, spread over the regular messages in ordinary lines.
Project projectOfSize(std::size_t bytes) {
    const std::string line = "TEXT 0 0 GREEN BLACK \"Level in the wet well\"\r\n";
    Project project;
    for (std::string& text : project.STDMSG) {
        text = "CLEAR\r\n";
        while (text.size() < bytes / project.STDMSG.size())
            text += line;
    }
    return project;
}

Project exampleProject() {
    const testing::TemporaryFolder folder;
    std::filesystem::copy(systemPath(ORVISTA_EXAMPLES "/pumpstation"), systemPath(folder.file("copy")));
    const PathRules paths = PathRules::native();
    testing::ScriptedMessages messages;
    Project project;
    if (!DocMgrModule::ReadProject(folder.file("copy/PUMPSTATION.orx"), project, {paths, messages}))
        throw std::runtime_error("no example");
    return project;
}

/// Argument 0 is the example project, any other a size in megabytes.
Project projectFor(const benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    return size == 0 ? exampleProject() : projectOfSize(size * megabyte);
}

void Save(benchmark::State& state) {
    SavedProject saved(projectFor(state));
    runBesideFloor(
        state, [&] { saved.save(); }, [&] { saved.writeEveryFile(); });
}

void Open(benchmark::State& state) {
    SavedProject saved(projectFor(state));
    runBesideFloor(
        state, [&] { saved.open(); }, [&] { saved.moveBytesOfOpening(); });
}

void Judge(benchmark::State& state) {
    SavedProject saved(projectFor(state));
    runBesideFloor(
        state, [&] { saved.judge(); }, [&] { saved.readProjectFile(); });
}

/// The example's folder as a display's files lie there once they are fetched.
class FetchedExample {
public:
    FetchedExample() {
        for (const auto& entry : std::filesystem::directory_iterator(ORVISTA_EXAMPLES "/pumpstation")) {
            std::filesystem::copy(entry, systemPath(folder_.path()));
            const std::string name = utf8Path(entry.path().filename());
            if (isBitmapName(name))
                files_[folder_.file(name)] = testing::fileBytes(folder_.file(name));
        }
        for (const DeviceFile* const file : deviceFiles)
            files_[folder_.file(std::string(file->name))] =
                testing::fileBytes(folder_.file(std::string(file->name)));
    }

    /// Within a millisecond of the processor.
    void fingerprint() {
        benchmark::DoNotOptimize(orvista::fingerprint(DisplayContents::ofFolder(folder_.path())));
    }
    void readEveryFile() {
        for (auto& [path, bytes] : files_)
            readWhole(path, bytes);
    }

private:
    testing::TemporaryFolder folder_;
    std::map<std::string, std::string> files_;
};

void Fingerprint(benchmark::State& state) {
    FetchedExample example;
    runBesideFloor(
        state, [&] { example.fingerprint(); }, [&] { example.readEveryFile(); });
}

/// 16 MB beside 1 MB: linear cost keeps the ratio near 16.
void Growth(benchmark::State& state, void (SavedProject::*work)()) {
    SavedProject small(projectOfSize(megabyte));
    SavedProject large(projectOfSize(16 * megabyte));
    runBesideFloor(
        state, [&] { (large.*work)(); }, [&] { (small.*work)(); });
}

void SaveGrowth(benchmark::State& state) {
    Growth(state, &SavedProject::save);
}
void OpenGrowth(benchmark::State& state) {
    Growth(state, &SavedProject::open);
}

BENCHMARK(Save)->Arg(0)->Arg(1)->Arg(16)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(Open)->Arg(0)->Arg(1)->Arg(16)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(Judge)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(Fingerprint)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(SaveGrowth)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenGrowth)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orvista::bench

#include "model/FileReplacing.h"
#include "tests/faults/CarriedOut.h"
#include "tests/support/SimulatorProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <QCoreApplication>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

/// killed_acceptance_test [kills] [seed]: a process has a display show its messages and gives variables
/// values, until it is killed, again and again. What it has kept then is enough to put everything back.
namespace {

using namespace orvista;
using namespace orvista::testing;

[[noreturn]] void work(const Project& project, const DisplayAddress& display, const std::string& copy,
                       unsigned seed) {
    std::minstd_rand random(seed);
    AcceptanceRun run(displayItems(project), [&copy](const AcceptanceRun& kept) {
        replaceFile(copy, acceptanceCopy({"display", kept.before(), kept.written()}));
        return true;
    });
    carryOut(run, display, [&] {
        if (random() % 3 == 0)
            run.write({{{Kind::Float, random() % 3}, {1, 2}}, {{Kind::Boolean, random() % 3}, {1, 0}}});
        else
            run.show(random() % 3 == 0 ? Item(Kind::Emergency, random() % 3)
                                       : Item(Kind::Regular, random() % 6));
    });
    std::_Exit(EXIT_FAILURE); // it was to be killed before
}

void putBack(const DisplayAddress& display, const std::string& copy) {
    if (!std::filesystem::exists(copy))
        return; // killed before anything was written
    putBackCopy(display, fileBytes(copy));
    std::filesystem::remove(copy);
}

void run(int kills, unsigned seed) {
    const SimulatorProcess simulator;
    const DisplayAddress display{"127.0.0.1", simulator.modbusPort()};
    const TemporaryFolder folder;
    Project project;
    project.DigitalInput = 500;
    writeToDisplay(display, switchWrites(project, {"STDMSG5", "STDMSG30"}, {}));
    writeToDisplay(display, assignedWrites({"RegVar2=1.5", "CoilVar1=on"}, &project));
    const std::vector<DisplayItem> before = heldBy(display, project);
    std::minstd_rand random(seed);
    for (int kill = 0; kill < kills; ++kill) {
        const pid_t child = fork();
        if (child == 0)
            work(project, display, folder.file("copy"), seed + static_cast<unsigned>(kill));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 60'000));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        if (!WIFSIGNALED(status))
            throw std::runtime_error("the acceptance ended by itself");
        putBack(display, folder.file("copy"));
        if (heldBy(display, project) != before)
            throw std::runtime_error("something is not as before, kill " + std::to_string(kill));
        QCoreApplication::processEvents(); // what the display prints has to be read
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        run(argc > 1 ? std::atoi(argv[1]) : 30, argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}

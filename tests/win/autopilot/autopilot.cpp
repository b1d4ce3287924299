// The autopilot of scripts/run.sh on a display nobody watches: runs a program,
// saves a screenshot of each window it opens into HERALDER_SHOT_DIR and
// answers it as a user pressing Enter would, then reports what it met.
//   autopilot.exe PROGRAM [ARGUMENTS...]
#include <cstdio>
#include <string>

#include "tests/win/process_driver.h"
#include "tests/win/test_support.h"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: autopilot PROGRAM [ARGUMENTS...]\n");
        return 2;
    }
    std::string arguments;
    for (int i = 2; i < argc; ++i) arguments += (i > 2 ? " " : "") + std::string(argv[i]);

    const ProcessRun run = runProcess(
        argv[1], arguments,
        [](HWND dialog, int index) {
            char name[64];
            std::snprintf(name, sizeof name, "window_%02d", index + 1);
            saveWindowScreenshot(dialog, name);
            return false;  // answered with Enter
        },
        15 * 60 * 1000);
    if (!run.started) {
        std::fprintf(stderr, "autopilot: cannot start %s\n", argv[1]);
        return 2;
    }
    for (std::size_t i = 0; i < run.windows.size(); ++i) {
        std::string firstLine = run.windows[i].text.substr(0, run.windows[i].text.find('\n'));
        std::printf("window %zu: \"%s\" %s\n", i + 1, run.windows[i].title.c_str(),
                    firstLine.substr(0, 70).c_str());
    }
    std::printf("exit code: %lu%s\n", static_cast<unsigned long>(run.exitCode),
                run.exited ? "" : " (stopped at the time limit)");
    return run.exited ? static_cast<int>(run.exitCode) : 1;
}

// heralder-tool settings FILE: reads FILE exactly as the agent reads its
// settings file, starting from the defaults, and prints the key lines the agent
// would write back. The header with its time stamp is left out so that the
// output depends on the file alone and can be compared byte for byte.
#include <cstdio>
#include <string>

#include "settings/settings_file.h"
#include "tools/tool_commands.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

int runSettingsCommand(int argc, char** argv) {
    if (argc != 1) {
        std::fputs("usage: heralder-tool settings FILE\n", stderr);
        return 2;
    }
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);  // LF line ends, as on every platform
#endif
    if (!mayReadToolSettings(argv[0])) return 1;
    Settings record;
    readSettingsFile(record, argv[0]);  // a missing file leaves the defaults, as in the agent
    const std::string lines = formatSettingLines(record);
    std::fwrite(lines.data(), 1, lines.size(), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
}

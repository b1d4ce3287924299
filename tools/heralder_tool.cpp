// heralder-tool: the publisher's command-line companion. It runs the agent's own
// readers over a file and prints what the agent would make of it, so that a
// document or a settings file can be checked before it is published or shipped.
#include <cstdio>
#include <cstring>

#include "tools/tool_commands.h"

namespace {

struct Command {
    const char* name;
    const char* usage;
    int (*run)(int argc, char** argv);
};

const Command commands[] = {
    {"parse", "parse FILE      print the items of an update document as JSON", runParseCommand},
    {"settings", "settings FILE   print the settings that a settings file gives",
     runSettingsCommand},
    {"check",
     "check [--json] [--images DIR] [--key PUBLIC.pem] FILE\n"
     "                  report what an update document will not do as meant",
     runCheckCommand},
    {"keygen", "keygen DIR      write a new signing key: DIR/feed-private.pem, feed-public.pem",
     runKeygenCommand},
    {"sign",
     "sign --key PRIVATE.pem --serial N [--expires YYYY-MM-DD] IN OUT\n"
     "                  write IN signed to OUT (expiry: 14 days ahead unless given)",
     runSignCommand},
    {"verify",
     "verify --key PUBLIC.pem [--key PUBLIC2.pem] FILE\n"
     "                  say whether a signed document verifies",
     runVerifyCommand},
};

int usage() {
    std::fputs("usage: heralder-tool COMMAND [OPTIONS] FILE\n", stderr);
    for (const Command& c : commands) std::fprintf(stderr, "  %s\n", c.usage);
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return usage();
    for (const Command& c : commands)
        if (std::strcmp(argv[1], c.name) == 0) return c.run(argc - 2, argv + 2);
    return usage();
}

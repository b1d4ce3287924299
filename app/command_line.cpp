// Placeholder until command-line interpretation lands.
#include "app/command_line.h"

CommandLinePlan interpretCommandLine(std::string_view) {
    return {};
}

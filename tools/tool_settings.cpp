#include "tools/tool_commands.h"
int runSettingsCommand(int, char**) { return 2; }

#include "tools/tool_commands.h"
int runParseCommand(int, char**) { return 2; }

#pragma once
// System information: the facts a support person asks a user for, gathered
// from this machine and shown in a dialog that copies them as plain text.
#include <string>

#include "base/win_headers.h"
#include "dialogs/system_report.h"
#include "settings/settings.h"

// Everything the report shows. The platform comes from the caller, which
// owns the version check; record gives the program's folder and build date.
SystemFacts gatherSystemFacts(const Settings& record, uint32_t platformCode,
                              const std::string& platformName);

// Shows the report in "SystemInfoBox"; "&Copy" (or Ctrl+C outside the
// report) puts all of it on the clipboard. 1 for Close, 0 for Escape.
int showSystemInfo(HWND owner, const std::string& report, const Settings& settings);

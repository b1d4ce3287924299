#pragma once
// Reads the machine's policy values from the registry.
#include "app/machine_policy.h"

// HKLM\Software\Policies\Quenmark\Heralder. A missing key or value, or a value
// of another type, leaves the setting at its default.
MachinePolicy readMachinePolicy();

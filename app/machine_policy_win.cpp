// Policy values live under HKLM\Software\Policies, which only administrators
// can write; the key is shared by the 32- and 64-bit registry views.
#include "app/machine_policy_win.h"

#include "base/win_handles.h"

namespace {

constexpr char kPolicyKey[] = "Software\\Policies\\Quenmark\\Heralder";

bool readDword(HKEY key, const char* name, DWORD& value) {
    DWORD type = 0;
    DWORD data = 0;
    DWORD size = sizeof data;
    if (RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&data), &size) !=
            ERROR_SUCCESS ||
        type != REG_DWORD || size != sizeof data)
        return false;
    value = data;
    return true;
}

}  // namespace

MachinePolicy readMachinePolicy() {
    MachinePolicy policy;
    UniqueKey key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kPolicyKey, 0, KEY_QUERY_VALUE, key.put()) !=
        ERROR_SUCCESS)
        return policy;
    DWORD value = 0;
    if (readDword(key.get(), "DisableUpdateCheck", value)) policy.disableUpdateCheck = value != 0;
    return policy;
}

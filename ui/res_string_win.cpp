// String resources of the program. They are read through one shared buffer of
// 8192 characters, the longest text the program keeps in its string table; a
// missing string is reported in the text itself, so a damaged program still
// says something readable where the text should be.
#include "ui/res_string_win.h"

namespace {
constexpr int kResStringSize = 8192;
char resStringBuffer[kResStringSize];
constexpr char kMissingString[] = "String table error - this application may be damaged";
}  // namespace

std::string loadResString(UINT id) {
    int n = LoadStringA(GetModuleHandleA(nullptr), id, resStringBuffer, kResStringSize);
    if (n <= 0) return kMissingString;
    return std::string(resStringBuffer, n);
}

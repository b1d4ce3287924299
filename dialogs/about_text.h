#pragma once
// What the About box says and the identifier its Shift action hands out, kept
// apart from the window so that the text handling is checked on any machine.
#include <string>
#include <string_view>

#include "base/version.h"

// The version the About box and the system report name: this build's, not
// the VersionNumber setting, which describes the settings file.
inline constexpr int kProgramMajor = HERALDER_VERSION_MAJOR;
inline constexpr int kProgramMinor = HERALDER_VERSION_MINOR;
inline constexpr char kProgramLetter = HERALDER_VERSION_LETTER;
inline constexpr int kProgramRevision = HERALDER_VERSION_REVISION;

// " (Revision 2)".
std::string revisionText(int revision);
// "17.0a (Revision 2)".
std::string programVersionText();

// The About text: the template's first "%d", "%d", "%c" and "%s" take the
// major, minor, letter and revision text, "%%" becomes "%". Any other "%"
// stays as it stands, so a stray one in the notice can never read memory.
std::string formatAboutText(std::string_view templateText);

// A GUID in the registry form ("{XXXXXXXX-XXXX-...}") cut at its closing
// brace and without its opening one: the 36 characters staff paste elsewhere.
std::string guidClipboardText(std::string_view registryForm);

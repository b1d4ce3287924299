#pragma once
// What the About box says and the identifier its Shift action hands out, kept
// apart from the window so that the text handling is checked on any machine.
// The version itself is this build's (base/version.h), not the VersionNumber
// setting, which describes the settings file.
#include <string>
#include <string_view>

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

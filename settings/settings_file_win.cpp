// The process-wide settings record bound to "Heralder17.ini" in the user's data
// folder. The folders are made before a save so that a user who never ran the
// installer still keeps settings; a failed save stays silent.
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"

void readSettings() {
    readSettingsFile(settings(), getUserDataPath(kSettingsFileName));
}

void writeSettings() {
    ensureDataFolders();
    writeSettingsFile(settings(), getUserDataPath(kSettingsFileName));
}

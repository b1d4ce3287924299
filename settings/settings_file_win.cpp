// A settings record bound to "Heralder17.ini" in the user's data
// folder. The folders are made before a save so that a user who never ran the
// installer still keeps settings; a failed save stays silent.
#include "base/win_handles.h"
#include "settings/file_locations_win.h"
#include "settings/settings_file.h"

namespace {

// Two copies of the program may save at the same moment (a logon run and one
// the user started); one at a time, so the file and its backups are never
// written by both at once. A copy that cannot get the lock in a few seconds
// saves anyway rather than lose the user's changes.
class SettingsFileLock {
  public:
    SettingsFileLock() : mutex_(CreateMutexA(nullptr, FALSE, "Local\\QuenmarkHeralderSettings")) {
        if (mutex_) {
            const DWORD r = WaitForSingleObject(mutex_.get(), 5000);
            owned_ = r == WAIT_OBJECT_0 || r == WAIT_ABANDONED;
        }
    }
    ~SettingsFileLock() {
        if (owned_) ReleaseMutex(mutex_.get());
    }
    SettingsFileLock(const SettingsFileLock&) = delete;
    SettingsFileLock& operator=(const SettingsFileLock&) = delete;

  private:
    UniqueKernelHandle mutex_;
    bool owned_ = false;
};

}  // namespace

void readSettings(Settings& record) {
    SettingsFileLock lock;
    readSettingsFile(record, getUserDataPath(kSettingsFileName));
}

void writeSettings(const Settings& record) {
    SettingsFileLock lock;
    ensureDataFolders();
    writeSettingsFile(record, getUserDataPath(kSettingsFileName));
}

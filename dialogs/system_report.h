#pragma once
// The system information report a support person asks a user for: what this
// copy of the program is, where it keeps its files, how it reaches the
// publisher's server and what else of the publisher's it finds. The Windows
// side gathers the facts into SystemFacts; the text is made here, so that its
// layout and every missing-file case are checked on any machine.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct ReportTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

struct FileFacts {
    std::string path;
    bool exists = false;
    uint64_t size = 0;
    std::optional<ReportTime> modified;  // local time
};

struct ProxyFacts {
    bool known = false;   // false when the system could not be asked
    bool direct = false;  // no proxy
    std::string proxy;    // the proxy list, as the system gives it
    std::string bypass;
};

struct ProductFacts {
    std::string file;  // the product's INI file
    std::string section;
    std::string version;  // as the notification windows show it
};

struct SystemFacts {
    std::string programVersion;
    std::string buildDate;
    std::string programFile;
    std::string platformName;
    uint32_t platformCode = 0;
    int screenWidth = 0;
    int screenHeight = 0;
    int dpi = 0;
    std::string programFolder;
    std::string dataFolder;
    std::string productFolder;
    FileFacts settingsFile;
    FileFacts settingsBackup;
    FileFacts settingsOlderBackup;
    FileFacts seenList;
    std::optional<std::size_t> seenEntries;  // distinct item numbers; none when unreadable
    std::string serverHost;
    std::string documentSignature;  // keys, last accepted, last refused; "" leaves the line out
    ProxyFacts proxy;
    std::vector<ProductFacts> products;
};

// "2026-11-23 07:41:02".
std::string formatReportTime(const ReportTime& time);
// The whole report, lines ending in CR LF, as the edit control and the
// clipboard want them.
std::string formatSystemReport(const SystemFacts& facts);

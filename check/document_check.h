#pragma once
// The publisher's check of an update document before it goes live. The agent
// reads the document forgivingly and never complains: one missing ":END"
// silently makes one item of two for every customer. This reads the same
// bytes with the agent's own reader and rules (line ends, braces, markers,
// keys, dates, the pictures and addresses the windows accept, the settings a
// feed may change) and says, line by line, where the document will not do
// what its author meant. It lives beside the windows because it applies
// their rules as well as the feed's.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class FindingSeverity { Error, Warning };

struct Finding {
    int line = 0;  // 1-based, as the publisher's editor counts lines
    FindingSeverity severity = FindingSeverity::Error;
    std::string text;

    bool operator==(const Finding&) const = default;
};

// The first bytes (at least eight, when the file has them) of the picture of
// that name in the folder the server offers as "/update/images/"; nullopt when
// there is no such file.
using ImageReader = std::function<std::optional<std::string>(const std::string& name)>;

// Everything worth knowing about the document (the file's bytes as read from
// disk), in line order: the first thousand findings, and when there are more,
// one last finding that counts the rest. Without an image reader, pictures are
// judged by name only.
std::vector<Finding> checkUpdateDocument(std::string_view fileBytes,
                                         const ImageReader& images = nullptr);

// "FILE:LINE: error: text" lines, then "FILE: 2 errors, 1 warning".
std::string formatFindings(std::string_view fileName, const std::vector<Finding>& findings);
bool hasErrors(const std::vector<Finding>& findings);

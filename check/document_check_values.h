#pragma once
// The document check's judgements of single values by the agent's own rules:
// the picture an item names, the assignment a setting update carries and the
// file a graphic update fetches. Each answer is what the publisher should be
// told, none when the value will do what it says.
#include <string>
#include <string_view>
#include <vector>

#include "feed/update_item.h"
#include "check/document_check.h"

struct Verdict {
    FindingSeverity severity;
    std::string text;
};

// GRAPHIC as the alert window takes it, and with images, as the folder has it.
std::vector<Verdict> judgePicture(const UpdateItem& item, const ImageReader& images);
// PLAINTEXT of a setting update, as the run applies it to the settings.
std::vector<Verdict> judgeSettingUpdate(std::string_view plainText);
// URL of a graphic update, and with images, whether the server will have it.
std::vector<Verdict> judgeGraphicUpdateUrl(const std::string& url, const ImageReader& images);

#ifndef VTRUTILS_TESTS_TEXT_INI_INIDOCUMENTS_H
#define VTRUTILS_TESTS_TEXT_INI_INIDOCUMENTS_H

#include "utilities/text/ini/IniFileReader.h"

#include <string>
#include <string_view>

/// `{A: k=v; l=;}{B: ...}`, with null texts shown as empty ones.
inline std::string Content(CIniFileReader& document) {
    const auto text = [](const char* owned) { return std::string(owned != nullptr ? owned : ""); };
    std::string shown;
    for (int s = 0; s < static_cast<int>(document.NumSections()); ++s) {
        shown += "{" + text(document.SectionName(static_cast<unsigned>(s))) + ":";
        for (int v = 0; v < document.GetNumValues(s); ++v) {
            const CIniValue& pair = *document.GetValue(s, v);
            shown += " " + text(pair.Key()) + "=" + text(pair.Value()) + ";";
        }
        shown += "}";
    }
    return shown;
}

inline bool Load(CIniFileReader& document, std::string_view text, bool sort = false) {
    return document.InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                                   static_cast<unsigned>(text.size()), sort);
}

inline std::string Get(const CIniFileReader& document, const char* section, const char* key) {
    char buffer[1024];
    document.GetString(section, key, "(none)", buffer, sizeof buffer);
    return buffer;
}

#endif

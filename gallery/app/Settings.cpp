#include "gallery/app/Settings.h"

#include "utilities/system/files/FileFunctions.h"

#include <sstream>

namespace gallery {

std::string Settings::Text(const char* name) const {
    char text[512] = "";
    GetRegistryString(HKEY_CURRENT_USER, key.c_str(), name, text, sizeof text);
    return text;
}

void Settings::SetText(const char* name, const std::string& text) {
    WriteRegistryString(HKEY_CURRENT_USER, key.c_str(), name, text.c_str());
}

std::vector<int> Settings::Numbers(const std::string& name) const {
    std::istringstream text(Text(name.c_str()));
    std::vector<int> numbers;
    for (int number = 0; text >> number;)
        numbers.push_back(number);
    return text.eof() ? numbers : std::vector<int>();
}

void Settings::SetNumbers(const std::string& name, const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "" : " ") + std::to_string(number);
    SetText(name.c_str(), text);
}

} // namespace gallery

#include "gallery/Arguments.h"

#include <vector>
#include <windows.h>
// Needs the types above.
#include <shellapi.h>

namespace gallery {

namespace {

std::vector<std::wstring> Parameters(const wchar_t* commandLine) {
    int count = 0;
    wchar_t** texts = CommandLineToArgvW(commandLine, &count);
    std::vector<std::wstring> parameters;
    for (int i = 1; texts != nullptr && i < count; ++i)
        parameters.emplace_back(texts[i]);
    LocalFree(texts);
    return parameters;
}

} // namespace

Arguments ReadArguments(const wchar_t* commandLine) {
    Arguments arguments;
    const struct {
        const wchar_t* name;
        std::wstring& value;
    } options[] = {{L"--language", arguments.language},
                   {L"--registry", arguments.registryKey},
                   {L"--pictures", arguments.pictureFolder}};
    const auto mistaken = [&](const char* key, const std::wstring& parameter) {
        arguments.mistakeKey = key;
        arguments.mistake = parameter;
    };
    std::wstring* wanted = nullptr; // the value of the option before
    bool onlyFiles = false;
    const std::vector<std::wstring> parameters = Parameters(commandLine);
    for (const std::wstring& parameter : parameters) {
        if (wanted != nullptr) {
            *wanted = parameter;
            wanted = nullptr;
            continue;
        }
        for (const auto& option : options) {
            if (!onlyFiles && parameter == option.name)
                wanted = &option.value;
        }
        if (wanted != nullptr)
            continue;
        if (!onlyFiles && parameter == L"--")
            onlyFiles = true;
        else if (!onlyFiles && parameter == L"--help")
            arguments.help = true;
        else if (!onlyFiles && parameter.rfind(L"--", 0) == 0)
            mistaken("UnknownOption", parameter);
        else if (arguments.document.empty())
            arguments.document = parameter;
        else
            mistaken("SecondDocument", parameter);
    }
    if (wanted != nullptr)
        mistaken("MissingValue", parameters.back());
    return arguments;
}

} // namespace gallery

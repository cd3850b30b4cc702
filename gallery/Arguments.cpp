#include "gallery/Arguments.h"

#include "common/Require.h"
#include "gallery/text/Text.h"
#include "utilities/text/language/LanguageStrings.h"
#include "utilities/text/strings/StringFunctions.h"

namespace gallery {

namespace {

std::string Parameter(int index) {
    char text[4096];
    GetCommandLineParameter(index, text, sizeof text);
    return text;
}

/// The value after an option.
std::string Value(Arguments& arguments, int index, const char* mistake) {
    std::string value = Parameter(index);
    if (value.empty())
        arguments.mistake = mistake;
    return value;
}

void ReadParameters(Arguments& arguments) {
    for (int i = 1;; ++i) {
        const std::string parameter = Parameter(i);
        if (parameter.empty())
            return;
        if (parameter == "--pictures")
            arguments.pictureFolder =
                Widen(Value(arguments, ++i, "--pictures needs a folder").c_str());
        else if (parameter == "--language")
            arguments.language = Value(arguments, ++i, "--language needs a name");
        else if (parameter == "--registry")
            arguments.registryKey = Value(arguments, ++i, "--registry needs a key");
        else if (arguments.document.empty())
            arguments.document = Widen(parameter.c_str());
        else
            arguments.mistake = "more than one document: " + parameter;
    }
}

} // namespace

Arguments ReadArguments() {
    VTR_REQUIRE(GetCurrentCodePage() == 0);
    Arguments arguments;
    ReadParameters(arguments);
    if (arguments.document.empty())
        arguments.document = Widen((ProgramFolder() + "media-settings.ini").c_str());
    if (arguments.registryKey.empty())
        arguments.registryKey = "Software\\vtrutils gallery";
    return arguments;
}

} // namespace gallery

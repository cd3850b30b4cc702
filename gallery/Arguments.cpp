#include "gallery/Arguments.h"

#include "utilities/text/StringFunctions.h"
#include "vtrfutls/FileNames.h"

#include <windows.h>

namespace gallery {

namespace {

std::string Parameter(int index) {
    char text[4096];
    GetCommandLineParameter(index, text, sizeof text);
    return text;
}

std::string ShippedDocument() {
    char program[MAX_PATH] = "";
    char folder[MAX_PATH];
    GetModuleFileNameA(/*hModule=*/nullptr, program, sizeof program);
    ExtractDirectory(program, folder, sizeof folder);
    return std::string(folder) + "media-settings.ini";
}

void ReadParameters(Arguments& arguments) {
    for (int i = 1;; ++i) {
        const std::string parameter = Parameter(i);
        if (parameter.empty())
            return;
        if (parameter == "--pictures") {
            arguments.pictureFolder = Parameter(++i);
            if (arguments.pictureFolder.empty())
                arguments.mistake = "--pictures needs a folder";
        } else if (arguments.document.empty()) {
            arguments.document = parameter;
        } else {
            arguments.mistake = "more than one document: " + parameter;
        }
    }
}

} // namespace

Arguments ReadArguments() {
    Arguments arguments;
    ReadParameters(arguments);
    if (arguments.document.empty())
        arguments.document = ShippedDocument();
    return arguments;
}

} // namespace gallery

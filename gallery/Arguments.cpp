#include "gallery/Arguments.h"

#include "gallery/Text.h"
#include "utilities/text/StringFunctions.h"

namespace gallery {

namespace {

std::string Parameter(int index) {
    char text[4096];
    GetCommandLineParameter(index, text, sizeof text);
    return text;
}

void ReadParameters(Arguments& arguments) {
    for (int i = 1;; ++i) {
        const std::string parameter = Parameter(i);
        if (parameter.empty())
            return;
        if (parameter == "--pictures") {
            arguments.pictureFolder = Widen(Parameter(++i).c_str());
            if (arguments.pictureFolder.empty())
                arguments.mistake = "--pictures needs a folder";
        } else if (parameter == "--language") {
            arguments.language = Parameter(++i);
            if (arguments.language.empty())
                arguments.mistake = "--language needs a name";
        } else if (arguments.document.empty()) {
            arguments.document = Widen(parameter.c_str());
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
        arguments.document = Widen((ProgramFolder() + "media-settings.ini").c_str());
    return arguments;
}

} // namespace gallery

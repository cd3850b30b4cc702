#include "utilities/vtrutils.h"
#include "vtrfutls/vtrfutls.h"

#include <cstdio>

static void ToStandardError(const char* line, void*) {
    std::fprintf(stderr, "%s\n", line);
}

int main() {
    SetLogSink(ToStandardError, nullptr);

    static const unsigned char text[] = "[Mixer]\r\n"
                                        "Rate = 44100 ; samples a second\r\n"
                                        "[Mixer: Live] : [Mixer]\r\n"
                                        "Title = \" On stage \"\r\n";
    CIniFileReader settings;
    if (!settings.InitFromBuffer(text, sizeof text - 1, /*sort=*/true))
        return 1;
    settings.SetValue("Mixer: Live", "Channels", "2");
    settings.SetFileName("host-settings.ini");
    // A bare name: in the current folder, where the second save finds the file of the first.
    if (!settings.Save() || !settings.Save())
        return 1;

    CIniFileReader saved;
    char title[64];
    if (!saved.Init("host-settings.ini", /*sort=*/true) ||
        !saved.GetString("mixer: live", "TITLE", "untitled", title, sizeof title))
        return 1;
    SearchAndReplaceAll(title, "stage", "tour", sizeof title, /*caseSensitive=*/true);
    RemoveSpacesA(title, /*alsoLineBreaks=*/false);
    std::printf("%s, %u sections\n", title, saved.NumSections());
    std::remove("host-settings.ini");
    return 0;
}

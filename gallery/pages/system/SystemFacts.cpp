#include "gallery/pages/system/SystemFacts.h"

#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "utilities/system/info/SystemInfo.h"

#include <algorithm>
#include <windows.h>

namespace gallery {

namespace {

std::wstring Trimmed(std::wstring text) {
    const std::size_t last = text.find_last_not_of(L" \n");
    text.resize(last == std::wstring::npos ? 0 : last + 1);
    return text;
}

/// The parts of a description such as "Microsoft Windows 7 Service Pack 1 (Build 7601)"; "" where
/// there is none.
struct Description {
    explicit Description(const std::wstring& text) {
        const std::wstring buildMark = L"(Build ";
        const std::size_t buildAt = std::min(text.find(buildMark), text.size());
        const std::size_t packAt = std::min(text.find(L"Service Pack"), buildAt);
        name = Trimmed(text.substr(0, packAt));
        servicePack = Trimmed(text.substr(packAt, buildAt - packAt));
        if (buildAt < text.size())
            build = text.substr(buildAt + buildMark.size(),
                                text.find(L')', buildAt) - buildAt - buildMark.size());
    }
    std::wstring name;
    std::wstring servicePack;
    std::wstring build;
};

std::wstring YesOrNo(bool yes) {
    return Text(yes ? "Yes" : "No");
}

std::wstring OrNone(const std::wstring& value) {
    return value.empty() ? Text("FactNone") : value;
}

} // namespace

int Processors() {
    SYSTEM_INFO info{};
    GetNativeSystemInfo(&info);
    return static_cast<int>(info.dwNumberOfProcessors);
}

std::vector<SystemFact> SystemFacts() {
    char text[256] = "";
    const int code = GetWindowsSystemVersion(text);
    const Description description(Widen(text, CP_ACP));
    const unsigned clock = CPUSpeed();
    return {
        {"FactName", OrNone(description.name)},
        {"FactServicePack", OrNone(description.servicePack)},
        {"FactBuild", OrNone(description.build)},
        {"FactCode", std::to_wstring(code)},
        {"FactUnicode", YesOrNo(OSIsNativeUnicode())},
        {"FactThemes", YesOrNo(SystemUsesXPThemes())},
        {"FactComposition", YesOrNo(SystemUsesAeroThemes())},
        {"FactClock", clock > 0 ? Text("Megahertz", {Number(clock)}) : Text("FactNone")},
        {"FactProcessors", Number(Processors())},
        {"FactDiskDriver", YesOrNo(BadIntelAppAcceleratorInstalled())},
    };
}

} // namespace gallery

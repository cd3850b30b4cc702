#include "gallery/pages/ini/IniLosses.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr std::size_t longestName = 63;

/// Goes through a text as the library's reader does.
class Leftovers {
public:
    explicit Leftovers(std::string_view newText) : text(newText) {}

    IniLeftovers Count() {
        while (at < text.size()) {
            SkipBlanks();
            if (at >= text.size())
                break;
            if (text[at] == ';')
                ++found.comments;
            else if (text[at] == '[')
                Header();
            else if (text[at] != '\r' && text[at] != '\n')
                Pair();
            SkipLine();
        }
        EndSection();
        return found;
    }

private:
    void SkipBlanks() { at = std::min(text.find_first_not_of(" \t", at), text.size()); }
    std::size_t LineEnd() const { return std::min(text.find_first_of("\r\n", at), text.size()); }
    void SkipLine() { at = std::min(text.find_first_not_of("\r\n", LineEnd()), text.size()); }

    void EndSection() {
        found.emptySections += inSection && pairs == 0 ? 1 : 0;
        pairs = 0;
    }

    /// A header that is not closed takes the lines up to the next "]".
    void Header() {
        const std::size_t end = text.find(']', at);
        if (end == std::string_view::npos) {
            ++found.otherLines;
            at = text.size();
            return;
        }
        EndSection();
        const std::size_t length = end - at - 1;
        inSection = length > 0;
        found.longNames += length > longestName ? 1 : 0;
        at = end + 1;
        const std::string_view rest = text.substr(at, LineEnd() - at);
        const std::size_t colon = rest.find(':');
        const bool inherits =
            colon != std::string_view::npos && rest.find('[', colon) != std::string_view::npos;
        found.parents += inherits ? 1 : 0;
        found.comments += rest.find(';') != std::string_view::npos ? 1 : 0;
    }

    void Pair() {
        const std::string_view line = text.substr(at, LineEnd() - at);
        const std::size_t sign = line.find('=');
        const std::size_t value =
            sign == std::string_view::npos ? sign : line.find_first_not_of(" \t", sign + 1);
        if (sign == std::string_view::npos || (sign == 0 && value == std::string_view::npos)) {
            ++found.otherLines;
            return;
        }
        ++pairs;
        found.loosePairs += inSection ? 0 : 1;
        found.comments += line.find(';', sign) != std::string_view::npos ? 1 : 0;
    }

    std::string_view text;
    std::size_t at = 0;
    bool inSection = false;
    int pairs = 0; ///< of the section
    IniLeftovers found;
};

} // namespace

IniLeftovers LeftoversOf(std::string_view text) {
    return Leftovers(text).Count();
}

} // namespace gallery

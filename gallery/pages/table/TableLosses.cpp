#include "gallery/pages/table/TableLosses.h"

#include <algorithm>
#include <cstddef>

namespace gallery {

int LinesLeftOut(std::string_view text, char delimiter) {
    int titles = 0;
    int leftOut = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = text.substr(0, end);
        bool quoted = false;
        int fields = 1;
        for (const char c : line) {
            quoted = quoted != (c == '"');
            fields += !quoted && c == delimiter ? 1 : 0;
        }
        // There is no field after a delimiter that ends the text.
        if (end == text.size() && !quoted && !line.empty() && line.back() == delimiter)
            --fields;
        if (titles == 0)
            titles = fields;
        else if (fields != titles)
            ++leftOut;
        text.remove_prefix(std::min(text.find_first_not_of("\r\n", end), text.size()));
    }
    return leftOut;
}

} // namespace gallery

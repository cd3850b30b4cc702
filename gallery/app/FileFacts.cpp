#include "gallery/app/FileFacts.h"

#include "common/Handles.h"
#include "utilities/text/strings/StringFunctions.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <shlwapi.h>
#include <vector>

namespace gallery {

namespace {

/// The lines that tell what a text is.
constexpr std::size_t tellingBytes = 64 * 1024;
constexpr int tellingLines = 20;

/// The bytes of a file, mapped: what is only looked at is not copied.
class MappedFile {
public:
    explicit MappedFile(const std::wstring& path) {
        const vtr::FileHandle file(CreateFileW(
            path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
            /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING, /*dwFlagsAndAttributes=*/0,
            /*hTemplateFile=*/nullptr));
        LARGE_INTEGER length{};
        readable = file && GetFileSizeEx(file.Get(), &length) && length.QuadPart < INT_MAX;
        if (!readable || length.QuadPart == 0)
            return;
        const vtr::KernelHandle mapping(
            CreateFileMappingW(file.Get(), /*lpFileMappingAttributes=*/nullptr, PAGE_READONLY, 0, 0,
                               /*lpName=*/nullptr));
        view = mapping ? MapViewOfFile(mapping.Get(), FILE_MAP_READ, 0, 0, 0) : nullptr;
        readable = view != nullptr;
        size = readable ? static_cast<std::size_t>(length.QuadPart) : 0;
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile() {
        if (view != nullptr)
            UnmapViewOfFile(view);
    }
    bool Readable() const { return readable; }
    std::string_view Bytes() const { return {static_cast<const char*>(view), size}; }

private:
    void* view = nullptr;
    std::size_t size = 0;
    bool readable = false;
};

bool IsUtf16(std::string_view bytes) {
    return StringIsUnicode(reinterpret_cast<const unsigned char*>(bytes.data()),
                           static_cast<int>(bytes.size()), /*requireTerminator=*/false);
}

std::string LowBytes(std::string_view bytes, int* reduced) {
    std::string text;
    const bool marked = bytes.substr(0, 2) == "\xFF\xFE";
    text.reserve(bytes.size() / 2);
    for (std::size_t i = marked ? 2 : 0; i + 1 < bytes.size(); i += 2) {
        text += bytes[i];
        if (reduced != nullptr && bytes[i + 1] != '\0')
            ++*reduced;
    }
    return text;
}

/// How many bytes the character takes in UTF-8; 0 when it is none.
std::size_t Utf8Length(std::string_view rest) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(rest[i]); };
    const unsigned lead = at(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length > rest.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0) != 0x80)
            return 0;
    }
    return length;
}

Encoding EncodingOfBytes(std::string_view bytes) {
    bool wide = false;
    bool utf8 = true;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte >= ' ' && byte < 0x80) {
            ++i;
            continue;
        }
        // Text has tabs, line ends, form feeds, escapes and, at its end, perhaps a Ctrl+Z.
        if (byte < ' ' && std::strchr("\t\r\n\f\x1A\x1B", byte == 0 ? 1 : byte) == nullptr)
            return Encoding::binary;
        const std::size_t length = utf8 ? Utf8Length(bytes.substr(i, 4)) : 1;
        wide = wide || byte >= 0x80;
        utf8 = utf8 && length > 0;
        i += std::max<std::size_t>(length, 1);
    }
    if (!wide)
        return Encoding::ascii;
    return utf8 ? Encoding::utf8 : Encoding::codePage;
}

bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

int CountLines(std::string_view text) {
    int lines = !text.empty() && IsLineEnd(text[0]) ? 1 : 0;
    bool inLine = false;
    for (const char c : text) {
        lines += !inLine && !IsLineEnd(c) ? 1 : 0;
        inLine = !IsLineEnd(c);
    }
    return lines;
}

/// The first lines that are not blank, without spaces before them.
std::vector<std::string_view> FirstLines(std::string_view text) {
    std::vector<std::string_view> lines;
    text = text.substr(0, tellingBytes);
    if (text.substr(0, 3) == "\xEF\xBB\xBF")
        text.remove_prefix(3);
    while (!text.empty() && lines.size() < tellingLines) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        std::string_view line = text.substr(0, end);
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        if (!line.empty())
            lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

int CountOutsideQuotes(std::string_view line, char wanted) {
    int count = 0;
    bool quoted = false;
    for (const char c : line) {
        quoted = quoted != (c == '"');
        count += !quoted && c == wanted ? 1 : 0;
    }
    return count;
}

bool CanBe(Contents contents, const std::vector<std::string_view>& lines) {
    if (lines.empty())
        return true;
    const auto isPair = [](std::string_view line) {
        return line[0] == '[' || line.find('=') != std::string_view::npos;
    };
    const auto isComment = [](std::string_view line) { return line[0] == ';'; };
    switch (contents) {
    case Contents::xml:
        return lines[0][0] == '<';
    case Contents::ini:
        return lines[0][0] != '<' && (std::any_of(lines.begin(), lines.end(), isPair) ||
                                      std::all_of(lines.begin(), lines.end(), isComment));
    default:
        return lines[0][0] != '<' && lines[0].find_first_of("\t;,") != std::string_view::npos;
    }
}

bool IsMost(Contents contents, const std::vector<std::string_view>& lines) {
    if (lines.empty() || !CanBe(contents, lines))
        return false;
    if (contents != Contents::ini)
        return true;
    const auto isIni = [](std::string_view line) {
        const bool header = line[0] == '[' && line.find(']') != std::string_view::npos;
        return line[0] == ';' || header || line.find('=') != std::string_view::npos;
    };
    const auto matches = std::count_if(lines.begin(), lines.end(), isIni);
    return matches * 2 > static_cast<std::ptrdiff_t>(lines.size());
}

Contents ContentsOfText(std::string_view text, Contents expected) {
    const std::vector<std::string_view> lines = FirstLines(text);
    if (expected != Contents::none && CanBe(expected, lines))
        return expected;
    for (const Contents contents : {Contents::xml, Contents::ini, Contents::table}) {
        if (IsMost(contents, lines))
            return contents;
    }
    return Contents::none;
}

constexpr struct {
    const wchar_t* extension;
    Contents contents;
} extensions[] = {{L"ini", Contents::ini},
                  {L"xml", Contents::xml},
                  {L"csv", Contents::table},
                  {L"tsv", Contents::table}};

Contents ContentsOfExtension(const std::wstring& path) {
    const wchar_t* extension = PathFindExtensionW(path.c_str());
    for (const auto& row : extensions) {
        if (*extension == L'.' && lstrcmpiW(row.extension, extension + 1) == 0)
            return row.contents;
    }
    return Contents::none;
}

} // namespace

FileFacts FactsOfFile(const std::wstring& path) {
    const MappedFile file(path);
    FileFacts facts;
    facts.readable = file.Readable();
    facts.contents = ContentsOfExtension(path);
    const std::string_view bytes = file.Bytes();
    if (!facts.readable || bytes.empty())
        return facts;
    std::string reduced;
    std::string_view text = bytes;
    if (IsUtf16(bytes)) {
        reduced = LowBytes(bytes, &facts.lettersReduced);
        text = reduced;
        facts.encoding = Encoding::utf16;
    } else {
        facts.encoding = EncodingOfBytes(bytes);
    }
    facts.contents = ContentsOfText(text, facts.contents);
    if (facts.contents == Contents::ini || facts.contents == Contents::xml)
        return facts;
    facts.lines = CountLines(text);
    facts.delimiter = DelimiterOf(text);
    return facts;
}

std::string TextOfFile(const std::wstring& path) {
    const MappedFile file(path);
    const std::string_view bytes = file.Bytes();
    if (bytes.empty())
        return {};
    return IsUtf16(bytes) ? LowBytes(bytes, nullptr) : std::string(bytes);
}

Contents ContentsOfFile(const std::wstring& path) {
    const MappedFile file(path);
    const std::string_view start = file.Bytes().substr(0, tellingBytes);
    const Contents expected = ContentsOfExtension(path);
    if (start.empty())
        return expected;
    return IsUtf16(start) ? ContentsOfText(LowBytes(start, nullptr), expected)
                          : ContentsOfText(start, expected);
}

const wchar_t* ExtensionOf(Contents contents) {
    for (const auto& row : extensions) {
        if (row.contents == contents)
            return row.extension;
    }
    return L"";
}

char DelimiterOf(std::string_view text) {
    const std::vector<std::string_view> lines = FirstLines(text);
    char best = ',';
    int bestScore = 0;
    for (const char delimiter : {',', ';', '\t'}) {
        const int inTitles = lines.empty() ? 0 : CountOutsideQuotes(lines[0], delimiter);
        const auto same = std::count_if(lines.begin(), lines.end(), [&](std::string_view line) {
            return inTitles > 0 && CountOutsideQuotes(line, delimiter) == inTitles;
        });
        // Lines that have as many as the titles count more than how many that are.
        const int score = static_cast<int>(same) * 1000 + std::min(inTitles, 999);
        if (inTitles > 0 && score > bestScore) {
            best = delimiter;
            bestScore = score;
        }
    }
    return best;
}

bool IsSameFile(const std::wstring& one, const std::wstring& other) {
    if (lstrcmpiW(one.c_str(), other.c_str()) == 0)
        return true;
    BY_HANDLE_FILE_INFORMATION facts[2] = {};
    int count = 0;
    for (const std::wstring* path : {&one, &other}) {
        const vtr::FileHandle file(
            CreateFileW(path->c_str(), /*dwDesiredAccess=*/0,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                        /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                        /*hTemplateFile=*/nullptr));
        if (!file || !GetFileInformationByHandle(file.Get(), &facts[count++]))
            return false;
    }
    return facts[0].dwVolumeSerialNumber == facts[1].dwVolumeSerialNumber &&
           facts[0].nFileIndexHigh == facts[1].nFileIndexHigh &&
           facts[0].nFileIndexLow == facts[1].nFileIndexLow;
}

FileStamp StampOfFile(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return {};
    const auto join = [](DWORD high, DWORD low) {
        return static_cast<unsigned long long>(high) << 32 | low;
    };
    return {join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime),
            join(data.nFileSizeHigh, data.nFileSizeLow)};
}

} // namespace gallery

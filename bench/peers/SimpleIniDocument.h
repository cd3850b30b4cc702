#ifndef VTRUTILS_BENCH_PEERS_SIMPLEINIDOCUMENT_H
#define VTRUTILS_BENCH_PEERS_SIMPLEINIDOCUMENT_H

#include <SimpleIni.h>
#include <algorithm>
#include <cstring>

namespace bench {

/// SimpleIni, ignoring case as `Less` does.
template <class Less>
class SimpleIniDocument {
public:
    bool Load(const char* path) { return document.LoadFile(path) >= 0; }

    bool Find(const char* section, const char* key, char* buffer) const {
        const char* value = document.GetValue(section, key);
        if (value == nullptr)
            return false;
        std::memcpy(buffer, value, std::strlen(value) + 1);
        return true;
    }

    bool Save(const char* path) { return document.SaveFile(path) >= 0; }

    std::size_t Count() const {
        typename Document::TNamesDepend names;
        document.GetAllSections(names);
        std::size_t count = 0;
        for (const auto& entry : names)
            count += static_cast<std::size_t>(std::max(document.GetSectionSize(entry.pItem), 0));
        return count;
    }

private:
    using Document = CSimpleIniTempl<char, Less, SI_ConvertA<char>>;
    Document document;
};

/// By the letters of ASCII.
class SimpleIni : public SimpleIniDocument<SI_GenericNoCase<char>> {
public:
    static constexpr char name[] = "SimpleIni";
};

/// By the multibyte code page, as ours does; its own choice on Windows.
class SimpleIniMultibyte : public SimpleIniDocument<SI_NoCase<char>> {
public:
    static constexpr char name[] = "SimpleIni _mbs";
};

} // namespace bench

#endif

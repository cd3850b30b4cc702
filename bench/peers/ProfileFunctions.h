#ifndef VTRUTILS_BENCH_PEERS_PROFILEFUNCTIONS_H
#define VTRUTILS_BENCH_PEERS_PROFILEFUNCTIONS_H

#include <string>
#include <windows.h>

namespace bench {

/// The profile functions of Windows. They keep documents in memory by themselves.
class ProfileFunctions {
public:
    static constexpr char name[] = "Windows profile";
    static constexpr unsigned bufferSize = 256;

    /// Makes Windows forget the document and read it again.
    bool Load(const char* file) {
        path = file;
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, file);
        char names[bufferSize];
        return GetPrivateProfileStringA(nullptr, nullptr, "", names, bufferSize, file) > 0;
    }

    bool Find(const char* section, const char* key, char* buffer) const {
        return GetPrivateProfileStringA(section, key, "", buffer, bufferSize, path.c_str()) > 0;
    }

private:
    std::string path;
};

} // namespace bench

#endif

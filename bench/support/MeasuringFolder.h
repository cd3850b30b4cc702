#ifndef VTRUTILS_BENCH_SUPPORT_MEASURINGFOLDER_H
#define VTRUTILS_BENCH_SUPPORT_MEASURINGFOLDER_H

#include <string>
#include <string_view>

namespace bench {

/// A fresh folder for what is measured, removed with everything in it.
class MeasuringFolder {
public:
    MeasuringFolder();
    MeasuringFolder(const MeasuringFolder&) = delete;
    MeasuringFolder& operator=(const MeasuringFolder&) = delete;
    ~MeasuringFolder();

    /// Writes the bytes and dates the file back by an hour: readers that keep a file as long as its
    /// date stays do not trust a date that is seconds old. Throws when writing fails.
    std::string Write(std::string_view name, std::string_view bytes) const;
    std::string File(std::string_view name) const { return path + std::string(name); }

private:
    std::string path;
};

/// The whole file, read at once; empty when it cannot be read.
std::string ReadWhole(const char* path);

} // namespace bench

#endif

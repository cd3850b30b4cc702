#include "bench/support/MeasuringFolder.h"

#include "common/Handles.h"

#include <chrono>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace bench {

MeasuringFolder::MeasuringFolder()
    : path((fs::temp_directory_path() / ("vtrutils-bench-" + std::to_string(GetCurrentProcessId())))
               .string() +
           "\\") {
    fs::create_directories(path);
}

MeasuringFolder::~MeasuringFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

std::string MeasuringFolder::Write(std::string_view name, std::string_view bytes) const {
    const std::string file = File(name);
    std::ofstream stream;
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    stream.open(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
    return file;
}

std::string ReadWhole(const char* path) {
    const vtr::StreamHandle stream(std::fopen(path, "rb"));
    if (!stream || std::fseek(stream.Get(), 0, SEEK_END) != 0)
        return {};
    std::string bytes(static_cast<std::size_t>(std::ftell(stream.Get())), '\0');
    std::rewind(stream.Get());
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stream.Get()));
    return bytes;
}

} // namespace bench

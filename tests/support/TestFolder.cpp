#include "tests/support/TestFolder.h"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <windows.h>

namespace fs = std::filesystem;

std::string FreshName() {
    static std::atomic<unsigned> number{0};
    return "vtrutils-test-" + std::to_string(GetCurrentProcessId()) + "-" +
           std::to_string(++number);
}

TestFolder::TestFolder() : path((fs::temp_directory_path() / FreshName() / "").string()) {
    fs::create_directories(path);
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(path, ignored))
        SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    fs::remove_all(path, ignored);
}

std::string TestFolder::Write(std::string_view name, std::string_view bytes) const {
    const std::string file = File(name);
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    EXPECT_TRUE(stream.good()) << file;
    return file;
}

std::string TestFolder::Listing() const {
    std::string listing;
    for (const auto& entry : fs::directory_iterator(path))
        listing += (listing.empty() ? "" : "|") + entry.path().filename().string();
    return listing;
}

std::string ReadBytes(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

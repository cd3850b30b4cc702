#ifndef VTRUTILS_TESTS_SUPPORT_TESTFOLDER_H
#define VTRUTILS_TESTS_SUPPORT_TESTFOLDER_H

#include <string>
#include <string_view>

/// A fresh, empty folder, removed with everything in it.
class TestFolder {
public:
    TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();

    /// With a trailing backslash.
    const std::string& Path() const { return path; }
    std::string File(std::string_view name) const { return path + std::string(name); }
    std::string Write(std::string_view name, std::string_view bytes) const;
    /// The names of the files in the folder, separated by "|".
    std::string Listing() const;

private:
    std::string path;
};

/// A name that nothing else has, in this process or in others that run.
std::string FreshName();

/// The whole file; fails the test when it cannot be read.
std::string ReadBytes(const std::string& file);

#endif

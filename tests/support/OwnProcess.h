#ifndef VTRUTILS_TESTS_SUPPORT_OWNPROCESS_H
#define VTRUTILS_TESTS_SUPPORT_OWNPROCESS_H

#include <cstdlib>
#include <gtest/gtest.h>
#include <process.h>
#include <string>
#include <windows.h>

/// For a test of what happens once in a process: true in a process that runs this test alone.
/// Elsewhere it runs that process, which must succeed, and is false. A test with several such
/// processes gives each a name; in each of them it is true for its own name only.
inline bool InOwnProcess(const std::string& name = "own") {
    constexpr char variable[] = "VTRUTILS_OWN_PROCESS";
    constexpr char unfinished[] = "TEST_PREMATURE_EXIT_FILE";
    if (const char* running = std::getenv(variable))
        return running == name;
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string filter =
        std::string("--gtest_filter=") + test.test_suite_name() + "." + test.name();
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    const char* file = std::getenv(unfinished);
    SetEnvironmentVariableA(variable, name.c_str());
    SetEnvironmentVariableA(unfinished, nullptr);
    EXPECT_EQ(_spawnl(_P_WAIT, program, "test", filter.c_str(), nullptr), 0) << name;
    SetEnvironmentVariableA(unfinished, file);
    SetEnvironmentVariableA(variable, nullptr);
    return false;
}

#endif

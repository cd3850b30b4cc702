#include "tests/support/TestKey.h"

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>
#include <stdexcept>

TestKey::TestKey() : TestKey("Software\\" + FreshName()) {}

TestKey::TestKey(std::string name, HKEY rootKey) : root(rootKey), subKey(std::move(name)) {
    DWORD found = 0;
    if (RegCreateKeyExA(root, SubKey(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, &found) !=
            ERROR_SUCCESS ||
        found != REG_CREATED_NEW_KEY)
        throw std::runtime_error("no fresh key " + subKey);
}

TestKey::~TestKey() {
    RegCloseKey(key);
    RegDeleteTreeA(root, SubKey());
}

void TestKey::Set(const char* name, const std::string& bytes, DWORD kind) const {
    EXPECT_EQ(RegSetValueExA(key, name, 0, kind, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
}

void TestKey::SetText(const char* name, const std::string& text) const {
    Set(name, text + '\0');
}

std::map<std::string, std::string> TestKey::Texts() const {
    std::map<std::string, std::string> texts;
    for (DWORD i = 0;; ++i) {
        char name[128];
        char bytes[1024];
        DWORD nameLength = sizeof name;
        DWORD length = sizeof bytes;
        DWORD kind = REG_NONE;
        if (RegEnumValueA(key, i, name, &nameLength, nullptr, &kind, reinterpret_cast<BYTE*>(bytes),
                          &length) != ERROR_SUCCESS)
            return texts;
        EXPECT_EQ(kind, static_cast<DWORD>(REG_SZ)) << name;
        EXPECT_EQ(length, strnlen(bytes, length) + 1) << name;
        texts[name] = std::string(bytes, length > 0 ? length - 1 : 0);
    }
}

#ifndef VTRUTILS_TESTS_PROMO_SPLIT_H
#define VTRUTILS_TESTS_PROMO_SPLIT_H

#include <string>
#include <vector>

inline std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

#endif

#ifndef VTRUTILS_TESTS_SUPPORT_RANDOMTEXT_H
#define VTRUTILS_TESTS_SUPPORT_RANDOMTEXT_H

#include <random>
#include <string>
#include <string_view>

/// Up to `longest` bytes of the alphabet.
inline std::string RandomText(std::mt19937& random, std::size_t longest,
                              std::string_view alphabet) {
    std::string text(random() % (longest + 1), ' ');
    for (char& c : text)
        c = alphabet[random() % alphabet.size()];
    return text;
}

#endif

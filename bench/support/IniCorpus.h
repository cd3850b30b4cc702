#ifndef VTRUTILS_BENCH_SUPPORT_INICORPUS_H
#define VTRUTILS_BENCH_SUPPORT_INICORPUS_H

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

struct IniPair {
    std::string section;
    std::string key;
    std::string value;
};

/// A document such as a large settings file: sections of 20 to 25 pairs in no order, 27 bytes a
/// line. No section name repeats, and no key within its section; no value is empty. The same
/// `count` gives the same pairs.
std::vector<IniPair> MakeIniPairs(std::size_t count);

/// The pairs, whose sections are together, as text.
std::string IniText(const std::vector<IniPair>& pairs);

/// What look-ups ask for, laid out in the order of asking, so that fetching a question costs almost
/// nothing compared with answering it.
class IniQuestions {
public:
    explicit IniQuestions(const std::vector<IniPair>& inOrder);
    IniQuestions(const IniQuestions&) = delete;
    IniQuestions& operator=(const IniQuestions&) = delete;

    struct Question {
        const char* section;
        const char* key;
    };

    /// Starts again after the last.
    const Question& Next() {
        const Question& question = questions[next];
        next = next + 1 < questions.size() ? next + 1 : 0;
        return question;
    }

private:
    std::string texts;
    std::vector<Question> questions;
    std::size_t next = 0;
};

/// The pairs in random order; the same pairs give the same order.
std::vector<IniPair> Shuffled(std::vector<IniPair> pairs);

} // namespace bench

#endif

#ifndef VTRUTILS_TEXT_TABLES_SORTKEYS_H
#define VTRUTILS_TEXT_TABLES_SORTKEYS_H

#include <cstdint>

namespace vtr {

class FieldRow;

/// The beginnings of the texts of one column, side by side, in the order of the rows. A search that
/// halves a large table finds nearly all that it needs in them. Each text itself would have to be
/// fetched by way of its row: from three places in memory, none near the last. Private to the
/// library. One thread at a time.
class SortKeys {
public:
    struct Key {
        /// Null counts as "".
        explicit Key(const char* of);
        Key(std::uint64_t first, std::uint64_t second, const char* of)
            : start{first, second}, text(of) {}

        /// As `CompareText` of the two texts, in every code page.
        int Compare(const Key& other) const;
        /// The same, if the first parts of the two do not tell.
        int CompareRest(const Key& other) const;
        /// True if the text has no more characters than those of `start`.
        bool IsWhole() const;

        /// The first sixteen characters without regard to case, the first one highest; 0x80 for one
        /// that is not ASCII, and zeros after it.
        std::uint64_t start[2];
        const char* text;
    };

    /// The keys must be set before they are used. Null when memory runs out.
    static SortKeys* Make(unsigned number);

    SortKeys(const SortKeys&) = delete;
    SortKeys& operator=(const SortKeys&) = delete;
    ~SortKeys();

    // Requires: index < the number of keys, and for `Insert` <=.

    /// As `Compare` of the key there.
    int Compare(unsigned index, const Key& other) const;
    /// Fetches what `Compare` will need from memory.
    void Prefetch(unsigned index) const;
    void Set(unsigned index, const Key& key);
    /// False when memory runs out.
    bool Insert(unsigned index, const Key& key);
    void Remove(unsigned index);

    /// Sorts the keys, and the rows, of which there are as many, alike, as `MergeSort` does. False,
    /// with both unchanged, when memory runs out.
    bool Sort(FieldRow** rows);

private:
    SortKeys() = default;
    bool Reserve(unsigned number);
    Key At(unsigned index) const;

    // One array of each part: the first decides nearly always, and stays in the fast memory.
    std::uint64_t* starts[2] = {};
    const char** texts = nullptr;
    unsigned count = 0;
    unsigned capacity = 0;
};

} // namespace vtr

#endif

#ifndef VTRUTILS_TEXT_TABLES_FIELDROW_H
#define VTRUTILS_TEXT_TABLES_FIELDROW_H

#include "common/Require.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace vtr {

/// One row of a table: a growable array of texts, which it does not own. Array and counts are in
/// one block, which halves what a large table costs to load and to search. Rows are made by `Make`,
/// grown by `Append` and freed by `Free` only. Private to the library. One thread at a time.
class FieldRow {
public:
    /// Null when memory runs out. If `texts` is null, all texts are null.
    static FieldRow* Make(char* const* texts, unsigned number) {
        const unsigned room = number < minimumCapacity ? minimumCapacity : number;
        void* block = std::malloc(SizeFor(room));
        if (block == nullptr)
            return nullptr;
        FieldRow* row = new (block) FieldRow{number, room};
        for (unsigned i = 0; i < number; ++i)
            row->Slots()[i] = texts != nullptr ? texts[i] : nullptr;
        return row;
    }

    /// Returns the row with one text more, perhaps in another place. Null, with the row as it was,
    /// when memory runs out.
    static FieldRow* Append(FieldRow* row, char* text) {
        if (row->count == row->capacity) {
            const unsigned room = row->capacity * 2;
            void* block = room > row->capacity ? std::realloc(row, SizeFor(room)) : nullptr;
            if (block == nullptr)
                return nullptr;
            row = static_cast<FieldRow*>(block);
            row->capacity = room;
        }
        row->Slots()[row->count++] = text;
        return row;
    }

    static void Free(FieldRow* row) { std::free(row); }

    unsigned Count() const { return count; }

    /// Null when out of range.
    char* At(unsigned index) const { return index < count ? Slots()[index] : nullptr; }

    /// Returns the old text. Requires: index < Count().
    char* Replace(unsigned index, char* text) {
        VTR_REQUIRE(index < count);
        char* old = Slots()[index];
        Slots()[index] = text;
        return old;
    }

    /// Requires: Count() > 0.
    char* RemoveLast() {
        VTR_REQUIRE(count > 0);
        return Slots()[--count];
    }

private:
    static constexpr unsigned minimumCapacity = 8;

    FieldRow(unsigned number, unsigned room) : count(number), capacity(room) {}

    static std::size_t SizeFor(unsigned room) {
        return sizeof(FieldRow) + std::size_t{room} * sizeof(char*);
    }

    char** Slots() { return reinterpret_cast<char**>(this + 1); }
    char* const* Slots() const { return reinterpret_cast<char* const*>(this + 1); }

    unsigned count;
    unsigned capacity;
};

} // namespace vtr

#endif

#include "utilities/text/tables/SortKeys.h"

#include "common/Require.h"
#include "utilities/base/MergeSort.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"

#include <bit>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace vtr {

namespace {

constexpr std::uint64_t beyondAscii = 0x80; // in place of the first character that is

/// The next eight characters; `text` is moved past them, or to the one that ends them.
std::uint64_t NextStart(const char*& text) {
    std::uint64_t start = 0;
    for (int shift = 64 - CHAR_BIT; shift >= 0; shift -= CHAR_BIT, ++text) {
        const unsigned c = static_cast<unsigned char>(*text);
        if (c == 0)
            break;
        if (c >= beyondAscii)
            return start | beyondAscii << shift;
        start |= std::uint64_t{c >= 'A' && c <= 'Z' ? c | 0x20 : c} << shift;
    }
    return start;
}

/// 0 if these do not tell.
int CompareStarts(std::uint64_t own, std::uint64_t others) {
    if (own == others)
        return 0;
    // What the first byte that differs stands for is known if it is ASCII in both.
    const int highest = (64 - 1 - std::countl_zero(own ^ others)) / CHAR_BIT * CHAR_BIT;
    if (((own | others) >> highest & beyondAscii) != 0)
        return 0;
    return own < others ? -1 : 1;
}

template <class T>
bool Resize(T*& items, unsigned number) {
    void* resized = std::realloc(items, std::size_t{number} * sizeof(T));
    if (resized != nullptr)
        items = static_cast<T*>(resized);
    return resized != nullptr;
}

/// Makes room for one, or closes the place of one.
template <class T>
void Move(T* items, unsigned from, unsigned to, unsigned number) {
    std::memmove(items + to, items + from, number * sizeof(T));
}

} // namespace

SortKeys::Key::Key(const char* of) : start{}, text(of) {
    if (of == nullptr)
        return;
    start[0] = NextStart(of);
    const std::uint64_t last = start[0] & UCHAR_MAX;
    if (last != 0 && last != beyondAscii)
        start[1] = NextStart(of);
}

int SortKeys::Key::Compare(const Key& other) const {
    const int order = CompareStarts(start[0], other.start[0]);
    return order != 0 ? order : CompareRest(other);
}

int SortKeys::Key::CompareRest(const Key& other) const {
    if (start[0] == other.start[0]) {
        const int order = CompareStarts(start[1], other.start[1]);
        if (order != 0 || (start[1] == other.start[1] && IsWhole()))
            return order;
    }
    return CompareText(text, other.text);
}

bool SortKeys::Key::IsWhole() const {
    constexpr std::uint64_t everyByte = 0x0101010101010101;
    return (start[1] & UCHAR_MAX) == 0 && ((start[0] | start[1]) & beyondAscii * everyByte) == 0;
}

int SortKeys::Compare(unsigned index, const Key& other) const {
    VTR_REQUIRE(index < count);
    const int order = CompareStarts(starts[0][index], other.start[0]);
    return order != 0 ? order : At(index).CompareRest(other);
}

SortKeys::Key SortKeys::At(unsigned index) const {
    return {starts[0][index], starts[1][index], texts[index]};
}

bool SortKeys::Sort(FieldRow** rows) {
    struct Item {
        Key key;
        FieldRow* row;
    };
    const std::unique_ptr<Item, Free> items(static_cast<Item*>(std::malloc(count * sizeof(Item))));
    if (items == nullptr)
        return false;
    for (unsigned i = 0; i < count; ++i)
        new (items.get() + i) Item{At(i), rows[i]};
    if (!MergeSort(items.get(), count,
                   [](const Item& a, const Item& b) { return a.key.Compare(b.key) < 0; }))
        return false;
    for (unsigned i = 0; i < count; ++i) {
        const Item& item = items.get()[i];
        Set(i, item.key);
        rows[i] = item.row;
    }
    return true;
}

void SortKeys::Prefetch(unsigned index) const {
    VTR_REQUIRE(index < count);
    __builtin_prefetch(starts[0] + index);
}

SortKeys* SortKeys::Make(unsigned number) {
    SortKeys* made = new (std::nothrow) SortKeys;
    if (made != nullptr && made->Reserve(number)) {
        made->count = number;
        return made;
    }
    delete made;
    return nullptr;
}

SortKeys::~SortKeys() {
    std::free(starts[0]);
    std::free(starts[1]);
    std::free(texts);
}

void SortKeys::Set(unsigned index, const Key& key) {
    VTR_REQUIRE(index < count);
    starts[0][index] = key.start[0];
    starts[1][index] = key.start[1];
    texts[index] = key.text;
}

bool SortKeys::Insert(unsigned index, const Key& key) {
    VTR_REQUIRE(index <= count);
    if (count == capacity && !Reserve(count + 1))
        return false;
    Move(starts[0], index, index + 1, count - index);
    Move(starts[1], index, index + 1, count - index);
    Move(texts, index, index + 1, count - index);
    ++count;
    Set(index, key);
    return true;
}

void SortKeys::Remove(unsigned index) {
    VTR_REQUIRE(index < count);
    --count;
    Move(starts[0], index + 1, index, count - index);
    Move(starts[1], index + 1, index, count - index);
    Move(texts, index + 1, index, count - index);
}

/// Room for half as many again.
bool SortKeys::Reserve(unsigned number) {
    if (number > UINT_MAX / 2)
        return false;
    const unsigned room = number + number / 2 + 8;
    if (!Resize(starts[0], room) || !Resize(starts[1], room) || !Resize(texts, room))
        return false;
    capacity = room;
    return true;
}

} // namespace vtr

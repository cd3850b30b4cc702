#include "utilities/containers/StringList.h"

#include "utilities/base/Layout.h"
#include "utilities/base/ListTooLong.h"
#include "utilities/base/SameText.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace {

/// What a text and the sentinel have. The text is after it, in the same allocation.
struct Links {
    Links* next;
    Links* previous;

    char* Text() { return reinterpret_cast<char*>(this + 1); }
    const char* Text() const { return reinterpret_cast<const char*>(this + 1); }

    /// Null when memory runs out.
    static Links* Make(const char* text) {
        const std::size_t size = std::strlen(text) + 1;
        auto* made = static_cast<Links*>(std::malloc(sizeof(Links) + size));
        if (made != nullptr)
            std::memcpy(made->Text(), text, size);
        return made;
    }

    void LinkBetween(Links* before, Links* behind) {
        previous = before;
        next = behind;
        before->next = behind->previous = this;
    }
};

} // namespace

struct CStringList::List {
    Links sentinel{&sentinel, &sentinel}; ///< before the first text and after the last
    long count = 0;
    long cursorIndex = 0;
    Links* cursor = &sentinel; ///< what was reached last by index; the sentinel: nothing

    List() = default;
    List(const List&) = delete;
    List& operator=(const List&) = delete;
    ~List() { Clear(); }

    void Clear() {
        for (Links* node = sentinel.next; node != &sentinel;) {
            Links* next = node->next;
            std::free(node);
            node = next;
        }
        sentinel = {&sentinel, &sentinel};
        cursor = &sentinel;
        count = cursorIndex = 0;
    }

    void Insert(Links* node, Links* place, long index) {
        node->LinkBetween(place->previous, place);
        ++count;
        if (cursor != &sentinel && index <= cursorIndex)
            ++cursorIndex;
    }

    void Delete(Links* node, long index) {
        node->previous->next = node->next;
        node->next->previous = node->previous;
        --count;
        if (node == cursor)
            cursor = node->next;
        else if (index < cursorIndex)
            --cursorIndex;
        std::free(node);
    }

    /// Starts from whichever of head, cursor and tail is nearest. Null when out of range.
    Links* At(long index) {
        if (index < 0 || index >= count)
            return nullptr;
        Links* node = sentinel.next;
        long at = 0;
        if (count - 1 - index < index) {
            node = sentinel.previous;
            at = count - 1;
        }
        if (cursor != &sentinel && std::abs(index - cursorIndex) < std::abs(index - at)) {
            node = cursor;
            at = cursorIndex;
        }
        for (; at < index; ++at)
            node = node->next;
        for (; at > index; --at)
            node = node->previous;
        cursor = node;
        cursorIndex = index;
        return node;
    }

    /// The first text that is the same, with its index; null when there is none.
    Links* Find(const char* text, long& index) {
        index = 0;
        for (Links* node = sentinel.next; text != nullptr && node != &sentinel;
             node = node->next, ++index) {
            if (vtr::SameText(node->Text(), text))
                return node;
        }
        return nullptr;
    }
};

template <>
struct vtr::Internals<CStringList> {
    using List = CStringList::List;
    static_assert(sizeof(CStringList) == sizeof(void*));
    static_assert(sizeof(Links) == vtr::ByPointer(16, 8));
    VTR_FIELD_AT(List, count, 16, 8);

    static List* CopyOf(const List* source);
    static void InsertBefore(CStringList& strings, Links* place, long index, const char* text);
};

using Internals = vtr::Internals<CStringList>;

CStringList::CStringList() noexcept : list(nullptr) {}

CStringList::CStringList(const CStringList& other) noexcept : list(Internals::CopyOf(other.list)) {}

CStringList& CStringList::operator=(const CStringList& other) noexcept {
    if (this == &other)
        return *this;
    delete list;
    list = Internals::CopyOf(other.list);
    return *this;
}

CStringList::~CStringList() {
    delete list;
}

void CStringList::AddLatestString(const char* text) {
    Internals::InsertBefore(*this, list != nullptr ? list->sentinel.next : nullptr, 0, text);
}

void CStringList::PushBackList(char* text) {
    Internals::InsertBefore(*this, list != nullptr ? &list->sentinel : nullptr, Count(), text);
}

void CStringList::AddSortedString(char* text) {
    if (text == nullptr || list == nullptr)
        return AddLatestString(text);
    Links* place = list->sentinel.next;
    long index = 0;
    for (; place != &list->sentinel && vtr::CompareText(place->Text(), text) <= 0; ++index)
        place = place->next;
    Internals::InsertBefore(*this, place, index, text);
}

int CStringList::ContainsString(char* text) noexcept {
    return StringIndex(text) >= 0 ? 1 : 0;
}

int CStringList::StringIndex(const char* text) noexcept {
    long index = 0;
    const bool found = list != nullptr && list->Find(text, index) != nullptr;
    return found ? static_cast<int>(index) : -1;
}

char* CStringList::Index(int index) noexcept {
    Links* found = list != nullptr ? list->At(index) : nullptr;
    return found != nullptr ? found->Text() : nullptr;
}

int CStringList::UpdateString(int index, char* text) noexcept {
    Links* old = list != nullptr && text != nullptr ? list->At(index) : nullptr;
    Links* replacement = old != nullptr ? Links::Make(text) : nullptr;
    if (replacement == nullptr)
        return 0;
    replacement->LinkBetween(old->previous, old->next);
    list->cursor = replacement;
    std::free(old);
    return 1;
}

int CStringList::DeleteString(char* text) noexcept {
    long index = 0;
    Links* found = list != nullptr ? list->Find(text, index) : nullptr;
    if (found == nullptr)
        return 0;
    list->Delete(found, index);
    return 1;
}

void CStringList::DeleteIndex(int index) noexcept {
    Links* found = list != nullptr ? list->At(index) : nullptr;
    if (found != nullptr)
        list->Delete(found, index);
}

void CStringList::DeleteStringList() noexcept {
    if (list != nullptr)
        list->Clear();
}

int CStringList::CopyFrom(CStringList& other) noexcept {
    List* copy = Internals::CopyOf(other.list);
    if (copy == nullptr && other.Count() > 0)
        return 0;
    delete list;
    list = copy;
    return 1;
}

long CStringList::Count() noexcept {
    return list != nullptr ? list->count : 0;
}

/// Null for an empty list and when memory runs out.
Internals::List* Internals::CopyOf(const List* source) {
    if (source == nullptr || source->count == 0)
        return nullptr;
    List* copy = new (std::nothrow) List;
    if (copy == nullptr)
        return nullptr;
    for (const Links* node = source->sentinel.next; node != &source->sentinel; node = node->next) {
        Links* made = Links::Make(node->Text());
        if (made == nullptr) {
            delete copy;
            return nullptr;
        }
        copy->Insert(made, &copy->sentinel, copy->count);
    }
    return copy;
}

/// `place` is null before the first text.
void Internals::InsertBefore(CStringList& strings, Links* place, long index, const char* text) {
    if (text == nullptr)
        return;
    List*& list = strings.list;
    if (list == nullptr) {
        list = new (std::nothrow) List;
        if (list == nullptr)
            return;
        place = &list->sentinel;
    }
    if (list->count == std::numeric_limits<long>::max())
        vtr::ThrowListTooLong();
    Links* node = Links::Make(text);
    if (node == nullptr)
        return;
    list->Insert(node, place, index);
}

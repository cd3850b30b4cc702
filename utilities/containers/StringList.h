#ifndef VTRUTILS_CONTAINERS_STRINGLIST_H
#define VTRUTILS_CONTAINERS_STRINGLIST_H

#include "utilities/Export.h"

/// A linked list of texts, each a copy of its own. Texts compare without regard to case, in the
/// current multibyte code page. A walk by ascending or descending index costs one step per call.
///
/// Null is not a text: it is not added and not found. When memory runs out, an addition changes
/// nothing; one to a list whose count is the largest `long` throws `std::length_error("list too
/// long")`. A text that was handed out is valid until it is updated or deleted.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CStringList {
public:
    CStringList() noexcept;
    /// Has copies of the texts; empty when memory runs out.
    CStringList(const CStringList& other) noexcept;
    CStringList& operator=(const CStringList& other) noexcept;
    ~CStringList();

    /// At the front, and at the back.
    void AddLatestString(const char* text);
    void PushBackList(char* text);

    /// Inserts before the first text that is greater, and so after equal ones. Looks at each text
    /// in turn.
    void AddSortedString(char* text);

    /// 1 or 0.
    int ContainsString(char* text) noexcept;

    /// The position of the first text that is the same, or -1.
    int StringIndex(const char* text) noexcept;

    /// Null when out of range.
    char* Index(int index) noexcept;

    /// Puts a copy in place of the text there. Returns 1; 0, with nothing changed, if the index is
    /// out of range, for null, and if memory runs out.
    int UpdateString(int index, char* text) noexcept;

    /// Deletes the first text that is the same. Returns 1, or 0 if there is none.
    int DeleteString(char* text) noexcept;

    /// Does nothing if it is out of range.
    void DeleteIndex(int index) noexcept;
    void DeleteStringList() noexcept;

    /// Replaces the texts with copies of the other list's. Returns 1, or 0 with nothing changed if
    /// memory runs out.
    int CopyFrom(CStringList& other) noexcept;

    /// How many texts there are.
    long Count() noexcept;

private:
    friend struct vtr::Internals<CStringList>;
    struct List;

    List* list; ///< null before the first text
};

#endif

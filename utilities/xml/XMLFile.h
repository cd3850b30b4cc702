#ifndef VTRUTILS_XML_XMLFILE_H
#define VTRUTILS_XML_XMLFILE_H

#include "utilities/Export.h"
#include "utilities/xml/XMLNode.h"

/// An XML document, read into a tree whose root it is. Nothing is validated: any text loads, and
/// badly formed text gives the tree that its tokens make.
///
/// - A first token `<?xml ...?>` makes the root: its name is "xml", and the top element is its
///   child. Otherwise the first element is the root. A `<!DOCTYPE ...>` that comes first is all
///   that is read.
/// - Names end at a space. Attributes have double-quoted values; one without a value is left out.
///   Names, attribute names and values are cut to 4,095 bytes.
/// - An unpaired quote within a tag, of either kind, hides the tag's end.
/// - A closing tag that does not name the open element opens a child. Elements that are left open
///   end with the text. A processing instruction opens a child.
/// - Text is kept as it is between two tags, with the name of its element, unless it consists of
///   spaces, control characters up to CR and bytes above 0x7F only.
/// - Comments are left out. One right before a tag hides the tag's attributes.
/// - The words and quoted texts of a `<!DOCTYPE ...>`, of up to 1,023 bytes, are kept as texts
///   without name.
/// - An element with 999,998 children is full: what follows belongs to its parent.
///
/// Tags are found byte by byte, and texts stay byte for byte as they were read, whatever encoding
/// the document names. Only in code page 1361, where a few characters have "<", "=", ">" or "?" as
/// their second byte, can that byte be taken for a part of a tag.
/// Thread-safety: one thread at a time, for all that came from one document together.
class VTRUTILS_API CXMLFile : public CXMLNode {
public:
    using CXMLNode::GetValue;

    CXMLFile() noexcept;

    /// Loads a file; UTF-16 is reduced to the low bytes of its units. FileFunctions.h says in which
    /// code page the path is. False, with the present tree kept, for a null or empty path, for a
    /// file that is missing, empty, unreadable or of 2 GB or more, and if memory runs out for its
    /// bytes.
    bool Open(const char* path) noexcept;

    /// Loads text up to its terminator. False, with the present tree kept, for null, "" and a text
    /// of 2 GB or more. If memory runs out, what there was no memory for is missing, and the
    /// children of a missing element belong to its parent. The text is not changed and must not be
    /// part of this document.
    bool LoadFromBuffer(char* text) noexcept;

    /// For the loads that follow. Null: no callback.
    void SetProgressCallback(ProgressCallback callback, void* user) noexcept;

    /// The loads that follow decode each element but the root, as `DeHTMLify` does.
    VTRUTILS_INLINE void SetShouldDeHTMLify(bool should) noexcept { shouldDeHTMLifyLoads = should; }
    VTRUTILS_INLINE bool ShouldDeHTMLify() const noexcept { return shouldDeHTMLifyLoads; }

    /// Decodes the whole document.
    VTRUTILS_INLINE void DeHTMLAll() noexcept { DeHTMLify(/*recursive=*/true); }

    /// Text number `index` of the root; null when out of range.
    VTRUTILS_INLINE CXMLValue* GetValue(unsigned int index) const noexcept {
        return GetContent(index);
    }
    VTRUTILS_INLINE const char* GetValue(const char* wanted, bool recurse) const noexcept {
        return GetValue(wanted, recurse, /*contentIndex=*/0);
    }

    /// The attributes of the root.
    VTRUTILS_INLINE unsigned int NumRootHeaderProperties() const noexcept {
        return NumHeaderProperties();
    }

private:
    friend struct vtr::Internals<CXMLFile>;

    ProgressCallback loadCallback;
    void* loadUser;
    unsigned int bufferLength;
    bool shouldDeHTMLifyLoads;
};

#endif

#ifndef VTRUTILS_XML_XMLNODE_H
#define VTRUTILS_XML_XMLNODE_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/xml/XMLValue.h"

#include <cstddef>
#include <new>

/// An element of an XML document: a name, attributes (header properties), pieces of text (content
/// strings) and child elements, all of which it owns. Names and texts compare without regard to
/// case in the current multibyte code page. What look-ups hand out stays the element's. Elements
/// may be nested to any depth: no operation needs more stack, or memory, for a deeper tree.
/// Thread-safety: one thread at a time, for all that came from one document together.
class VTRUTILS_API CXMLNode {
public:
    /// Called while a document is loaded, with the place in its text, the text's length and what
    /// the host registered. It must leave the document alone.
    using ProgressCallback = void (*)(unsigned position, unsigned size, void* user);

    /// No name, sequence number -1.
    CXMLNode() noexcept;

    /// Copies everything, down to the last descendant. When memory runs out, what could not be
    /// copied is missing.
    CXMLNode(const CXMLNode& other) noexcept;
    CXMLNode& operator=(const CXMLNode& other) noexcept;
    ~CXMLNode();

    /// Null when there is none. Valid while the element is not changed.
    VTRUTILS_INLINE const char* Name() const noexcept { return name; }

    /// 0: loading does not set it.
    VTRUTILS_INLINE unsigned int NodeLength() const noexcept { return nodeLength; }

    /// The place among the parent's texts and children in the document, from 0.
    VTRUTILS_INLINE int SequenceNumber() const noexcept { return sequenceNumber; }
    VTRUTILS_INLINE void SetSequenceNumber(int number) noexcept { sequenceNumber = number; }

    /// The length of the text, as the progress callback is told.
    VTRUTILS_INLINE void SetFileSize(unsigned int size) noexcept { fileSize = size; }

    /// Whether loading decodes this element; new ones have it from their parent.
    VTRUTILS_INLINE bool ShouldDeHTMLify() const noexcept { return shouldDeHTMLify; }
    VTRUTILS_INLINE void SetShouldDeHTMLify(bool should) noexcept { shouldDeHTMLify = should; }

    // By position.

    /// Direct children; null when out of range. They stay the element's.
    VTRUTILS_INLINE unsigned int NumChildren() const noexcept { return children.count; }
    VTRUTILS_INLINE CXMLNode* GetChild(unsigned int index) noexcept { return children.At(index); }
    VTRUTILS_INLINE const CXMLNode* GetChild(unsigned int index) const noexcept {
        return children.At(index);
    }

    /// Attributes; null when out of range. They stay the element's.
    VTRUTILS_INLINE unsigned int NumHeaderProperties() const noexcept {
        return headerProperties.count;
    }
    VTRUTILS_INLINE CXMLValue* GetHeaderProperty(unsigned int index) const noexcept {
        return headerProperties.At(index);
    }

    /// Texts between the children; null when out of range. They stay the element's.
    VTRUTILS_INLINE unsigned int NumContentStrings() const noexcept { return contentStrings.count; }
    VTRUTILS_INLINE CXMLValue* GetContent(unsigned int index) const noexcept {
        return contentStrings.At(index);
    }
    const char* GetContentString(unsigned int index) const noexcept;

    // By name or text: the first one, in the order of the document. Null if there is none, and for
    // null and "".

    /// Looks at direct children only.
    CXMLNode* GetChildByName(const char* wanted) noexcept;
    const CXMLNode* GetChildByName(const char* wanted) const noexcept;

    /// Looks at this element, then at each child with all its descendants.
    CXMLNode* FindNode(const char* wanted) noexcept;
    const CXMLNode* FindNode(const char* wanted) const noexcept;

    /// The child after the first one whose first text is `text`. The last child is not compared.
    CXMLNode* GetChildFollowingValue(const char* text) noexcept;
    const CXMLNode* GetChildFollowingValue(const char* text) const noexcept;

    /// The first text of that child; null when it has none.
    const char* GetValueFollowingValue(const char* text) const noexcept;

    /// The value of the attribute `wanted`, or text number `contentIndex` of the first child of
    /// that name, null when it has no such text. If there is neither and `recurse` is set, asks
    /// each child in turn the same question, until an answer is not null.
    const char* GetValue(const char* wanted, bool recurse, int contentIndex) const noexcept;

    // By sequence number.

    /// The child or text with that number; null when there is none.
    CXMLNode* GetChildBySequenceNumber(int number) noexcept;
    const CXMLNode* GetChildBySequenceNumber(int number) const noexcept;
    const char* GetValueBySequenceNumber(int number) const noexcept;
    VTRUTILS_INLINE const char* GetContentStringBySequenceNumber(int number) const noexcept {
        return GetValueBySequenceNumber(number);
    }

    /// Of children and texts; -1 when there are none.
    int HighestSequenceNumber() const noexcept;

    /// Decodes name, attributes and texts as `DeHTMLifyString` does, of all descendants too if
    /// `recursive`.
    void DeHTMLify(bool recursive) noexcept;

    /// Forgets children, attributes and texts without deleting them. Each, with all that it owns,
    /// is the caller's from then on, who frees it with `delete`.
    void EmptyChildrenNoDelete() noexcept;

    /// The elements of a document share blocks of memory, but each is freed with `delete`. Null if
    /// memory runs out.
    VTRUTILS_OWN_MEMORY

private:
    friend struct vtr::Internals<CXMLNode>;

    vtr::PointerFields<CXMLNode> children;
    vtr::PointerFields<CXMLValue> headerProperties;
    vtr::PointerFields<CXMLValue> contentStrings;
    char* name;
    int sequenceNumber;
    ProgressCallback progressCallback;
    void* progressUser;
    unsigned int fileSize;
    unsigned int nodeLength;
    bool shouldDeHTMLify;

    bool nameInBlock;       ///< in the object's own block, so not to be freed
    unsigned short nameKey; ///< tells most names that differ without reading them
    unsigned int indexInParent;
    CXMLNode* parent; ///< out of date once the parent has given its children away
};

#endif

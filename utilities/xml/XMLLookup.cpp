#include "common/Require.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"
#include "utilities/xml/XMLNode.h"
#include "utilities/xml/XMLText.h"

using vtr::IsEmptyText;

namespace {

/// Compares one text with many that are mostly others.
class Wanted {
public:
    /// Requires: not null.
    explicit Wanted(const char* text) : wanted(text), key(vtr::XMLNameKey(text)) {
        VTR_REQUIRE(text != nullptr);
    }

    /// The same for a name with its key.
    bool Is(const char* name, unsigned short nameKey) const {
        return vtr::MayBeSameXMLName(key, nameKey) && vtr::SameText(name, wanted);
    }

    bool Is(const char* text) const {
        static constexpr int caseBit = 'a' ^ 'A';
        if (text == nullptr)
            return false;
        const bool ascii = static_cast<signed char>(*text | *wanted) >= 0;
        if (ascii && ((*text ^ *wanted) & ~caseBit) != 0)
            return false;
        return vtr::SameText(text, wanted);
    }

private:
    const char* wanted;
    unsigned short key;
};

} // namespace

/// The node behind this one in the order of the document, its descendants left out unless
/// `descend`; null at the end of what `top` holds.
const CXMLNode* CXMLNode::Next(const CXMLNode* node, const CXMLNode* top, bool descend) noexcept {
    if (descend && node->children.Count() > 0)
        return node->children[0];
    for (; node != top; node = node->parent) {
        if (const CXMLNode* sibling = node->NextSibling())
            return sibling;
    }
    return nullptr;
}

const char* CXMLNode::GetContentString(unsigned int index) const noexcept {
    const CXMLValue* content = contentStrings.At(index);
    return content != nullptr ? content->Value() : nullptr;
}

const CXMLNode* CXMLNode::GetChildByName(const char* wanted) const noexcept {
    if (IsEmptyText(wanted))
        return nullptr;
    const Wanted wantedName(wanted);
    for (const CXMLNode* child : children) {
        if (wantedName.Is(child->name, child->nameKey))
            return child;
    }
    return nullptr;
}

CXMLNode* CXMLNode::GetChildByName(const char* wanted) noexcept {
    return const_cast<CXMLNode*>(static_cast<const CXMLNode*>(this)->GetChildByName(wanted));
}

const CXMLNode* CXMLNode::FindNode(const char* wanted) const noexcept {
    if (IsEmptyText(wanted))
        return nullptr;
    const Wanted wantedName(wanted);
    const CXMLNode* node = this;
    while (node != nullptr && !wantedName.Is(node->name, node->nameKey))
        node = Next(node, this, /*descend=*/true);
    return node;
}

CXMLNode* CXMLNode::FindNode(const char* wanted) noexcept {
    return const_cast<CXMLNode*>(static_cast<const CXMLNode*>(this)->FindNode(wanted));
}

const CXMLNode* CXMLNode::GetChildFollowingValue(const char* text) const noexcept {
    if (IsEmptyText(text))
        return nullptr;
    const Wanted wantedText(text);
    for (unsigned i = 1; i < children.Count(); ++i) {
        if (wantedText.Is(children[i - 1]->GetContentString(0)))
            return children[i];
    }
    return nullptr;
}

CXMLNode* CXMLNode::GetChildFollowingValue(const char* text) noexcept {
    return const_cast<CXMLNode*>(static_cast<const CXMLNode*>(this)->GetChildFollowingValue(text));
}

const char* CXMLNode::GetValueFollowingValue(const char* text) const noexcept {
    const CXMLNode* child = GetChildFollowingValue(text);
    return child != nullptr ? child->GetContentString(0) : nullptr;
}

const char* CXMLNode::GetValue(const char* wanted, bool recurse, int contentIndex) const noexcept {
    if (IsEmptyText(wanted))
        return nullptr;
    for (const CXMLNode* node = this; node != nullptr;) {
        const char* value = nullptr;
        const bool answered = node->FindValue(wanted, contentIndex, value);
        if (value != nullptr || !recurse)
            return value;
        node = Next(node, this, /*descend=*/!answered);
    }
    return nullptr;
}

/// True when an attribute or a child has the name; what it holds may be null all the same.
bool CXMLNode::FindValue(const char* wanted, int contentIndex, const char*& value) const noexcept {
    const Wanted wantedName(wanted);
    for (const CXMLValue* property : headerProperties) {
        if (wantedName.Is(property->FieldName())) {
            value = property->Value();
            return true;
        }
    }
    const CXMLNode* child = GetChildByName(wanted);
    if (child != nullptr && contentIndex >= 0)
        value = child->GetContentString(static_cast<unsigned>(contentIndex));
    return child != nullptr;
}

const CXMLNode* CXMLNode::GetChildBySequenceNumber(int number) const noexcept {
    for (const CXMLNode* child : children) {
        if (child->sequenceNumber == number)
            return child;
    }
    return nullptr;
}

CXMLNode* CXMLNode::GetChildBySequenceNumber(int number) noexcept {
    return const_cast<CXMLNode*>(
        static_cast<const CXMLNode*>(this)->GetChildBySequenceNumber(number));
}

const char* CXMLNode::GetValueBySequenceNumber(int number) const noexcept {
    for (const CXMLValue* content : contentStrings) {
        if (content->SequenceNumber() == number)
            return content->Value();
    }
    return nullptr;
}

int CXMLNode::HighestSequenceNumber() const noexcept {
    int highest = -1;
    for (const CXMLNode* child : children)
        highest = child->sequenceNumber > highest ? child->sequenceNumber : highest;
    for (const CXMLValue* content : contentStrings)
        highest = content->SequenceNumber() > highest ? content->SequenceNumber() : highest;
    return highest;
}

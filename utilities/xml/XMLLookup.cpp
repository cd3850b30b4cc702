#include "common/Require.h"
#include "utilities/base/CaseBit.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"
#include "utilities/xml/XMLInternals.h"
#include "utilities/xml/XMLText.h"

using Internals = vtr::XMLNodeInternals;
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
        return text != nullptr && vtr::CaseFilter(*wanted).Passes(*text) &&
               vtr::SameText(text, wanted);
    }

private:
    const char* wanted;
    unsigned short key;
};

/// True when an attribute or a child has the name; what it holds may be null all the same.
bool FindValue(const CXMLNode& node, const char* wanted, int contentIndex, const char*& value) {
    const Wanted wantedName(wanted);
    for (const CXMLValue* property : Internals::HeaderProperties(node)) {
        if (wantedName.Is(property->FieldName())) {
            value = property->Value();
            return true;
        }
    }
    const CXMLNode* child = node.GetChildByName(wanted);
    if (child != nullptr && contentIndex >= 0)
        value = child->GetContentString(static_cast<unsigned>(contentIndex));
    return child != nullptr;
}

} // namespace

const CXMLNode* Internals::Next(const CXMLNode* node, const CXMLNode* top, bool descend) {
    if (descend && node->children.count > 0)
        return node->children.slots[0];
    for (; node != top; node = node->parent) {
        if (const CXMLNode* sibling = NextSibling(*node))
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
    for (const CXMLNode* child : Internals::Children(*this)) {
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
        node = Internals::Next(node, this, /*descend=*/true);
    return node;
}

CXMLNode* CXMLNode::FindNode(const char* wanted) noexcept {
    return const_cast<CXMLNode*>(static_cast<const CXMLNode*>(this)->FindNode(wanted));
}

const CXMLNode* CXMLNode::GetChildFollowingValue(const char* text) const noexcept {
    if (IsEmptyText(text))
        return nullptr;
    const Wanted wantedText(text);
    for (unsigned i = 1; i < children.count; ++i) {
        if (wantedText.Is(children.slots[i - 1]->GetContentString(0)))
            return children.slots[i];
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
        const bool answered = FindValue(*node, wanted, contentIndex, value);
        if (value != nullptr || !recurse)
            return value;
        node = Internals::Next(node, this, /*descend=*/!answered);
    }
    return nullptr;
}

const CXMLNode* CXMLNode::GetChildBySequenceNumber(int number) const noexcept {
    for (const CXMLNode* child : Internals::Children(*this)) {
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
    for (const CXMLValue* content : Internals::ContentStrings(*this)) {
        if (content->SequenceNumber() == number)
            return content->Value();
    }
    return nullptr;
}

int CXMLNode::HighestSequenceNumber() const noexcept {
    int highest = -1;
    for (const CXMLNode* child : Internals::Children(*this))
        highest = child->sequenceNumber > highest ? child->sequenceNumber : highest;
    for (const CXMLValue* content : Internals::ContentStrings(*this))
        highest = content->SequenceNumber() > highest ? content->SequenceNumber() : highest;
    return highest;
}

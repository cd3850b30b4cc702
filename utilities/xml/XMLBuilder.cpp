#include "utilities/xml/XMLBuilder.h"

#include "common/Require.h"
#include "utilities/xml/XMLText.h"

#include <cstdint>
#include <cstring>

namespace vtr {

namespace {

/// Lets a list use the slots at `place`, which moves behind them.
template <class Item>
void LendSlots(PtrArray<Item>& list, unsigned count, char*& place) {
    list.Borrow(reinterpret_cast<Item**>(place), count);
    place += count * sizeof(Item*);
}

/// Most names and values are so short that calling `memcpy` takes longer: two words that may
/// overlap hold them.
void CopyBytes(const char* from, std::size_t length, char* to) {
    constexpr std::size_t word = 8;
    if (length < word || length > 2 * word) {
        std::memcpy(to, from, length);
        return;
    }
    std::uint64_t first;
    std::uint64_t last;
    std::memcpy(&first, from, word);
    std::memcpy(&last, from + length - word, word);
    std::memcpy(to, &first, word);
    std::memcpy(to + length - word, &last, word);
}

} // namespace

XMLBuilder::Text::Text(const char* terminated)
    : start(terminated), length(terminated != nullptr ? std::strlen(terminated) : 0) {}

char* XMLBuilder::Text::CopyTo(char*& room) const {
    if (start == nullptr)
        return nullptr;
    char* copy = room;
    CopyBytes(start, length, copy);
    copy[length] = '\0';
    room += length + 1;
    return copy;
}

CXMLNode* XMLBuilder::MakeNode(std::string_view name, Room room) {
    const std::size_t slots = room.children + room.headerProperties + room.contentStrings;
    const std::size_t nameSize = name.empty() ? 0 : name.size() + 1;
    char* behind =
        static_cast<char*>(nodes.Take(sizeof(CXMLNode) + slots * sizeof(void*) + nameSize));
    if (behind == nullptr)
        return nullptr;
    CXMLNode* node = new (static_cast<void*>(behind)) CXMLNode;
    behind += sizeof(CXMLNode);
    LendSlots(node->children, room.children, behind);
    LendSlots(node->headerProperties, room.headerProperties, behind);
    LendSlots(node->contentStrings, room.contentStrings, behind);
    if (nameSize > 0)
        node->TakeName(Text(name).CopyTo(behind), name.size(), /*inBlock=*/true);
    return node;
}

bool XMLBuilder::SetName(CXMLNode& node, std::string_view name) {
    char* copy = CopyXMLText(name);
    if (copy == nullptr)
        return false;
    node.TakeName(copy, name.size(), /*inBlock=*/false);
    return true;
}

CXMLValue* XMLBuilder::MakeValue(Text fieldName, Text value) {
    char* place =
        static_cast<char*>(values.Take(sizeof(CXMLValue) + fieldName.Room() + value.Room()));
    if (place == nullptr)
        return nullptr;
    CXMLValue* made = new (static_cast<void*>(place)) CXMLValue;
    char* behind = place + sizeof(CXMLValue);
    made->fieldName = fieldName.CopyTo(behind);
    made->value = value.CopyTo(behind);
    made->fieldNameInBlock = true;
    made->valueInBlock = true;
    return made;
}

/// Deletes a value that cannot be appended.
bool XMLBuilder::Append(PtrArray<CXMLValue>& list, CXMLValue* value) {
    if (value != nullptr && list.Append(value))
        return true;
    delete value;
    return false;
}

bool XMLBuilder::AddHeaderProperty(CXMLNode& node, std::string_view name, std::string_view value) {
    return Append(node.headerProperties, MakeValue(name, value));
}

bool XMLBuilder::AddContent(CXMLNode& node, const char* fieldName, std::string_view text) {
    const unsigned number = node.contentStrings.Count() + node.children.Count();
    CXMLValue* content = MakeValue(fieldName, text);
    if (content != nullptr)
        content->SetSequenceNumber(static_cast<int>(number));
    return Append(node.contentStrings, content);
}

bool XMLBuilder::AddChild(CXMLNode& node, CXMLNode* child) {
    const unsigned index = node.children.Count();
    if (!node.children.Append(child))
        return false;
    child->parent = &node;
    child->indexInParent = index;
    child->sequenceNumber = static_cast<int>(node.contentStrings.Count() + index);
    return true;
}

/// Goes through both trees side by side, in the order of the document.
void XMLBuilder::CopyTree(const CXMLNode& source, CXMLNode& target) {
    VTR_REQUIRE(target.name == nullptr && target.children.Count() == 0 &&
                target.headerProperties.Count() == 0 && target.contentStrings.Count() == 0);
    CopyOwn(source, target);
    const CXMLNode* from = &source;
    CXMLNode* to = &target;
    for (unsigned next = 0;;) {
        if (next < from->children.Count()) {
            CXMLNode* copy = CopyChild(*from->children[next], *to);
            if (copy == nullptr) {
                ++next;
                continue;
            }
            from = from->children[next];
            to = copy;
            next = 0;
        } else if (from == &source) {
            return;
        } else {
            next = from->indexInParent + 1;
            from = from->parent;
            to = to->parent;
        }
    }
}

CXMLNode* XMLBuilder::CopyChild(const CXMLNode& source, CXMLNode& targetParent) {
    CXMLNode* copy = MakeNode(
        source.name != nullptr ? source.name : "",
        {source.children.Count(), source.headerProperties.Count(), source.contentStrings.Count()});
    if (copy == nullptr)
        return nullptr;
    if (!AddChild(targetParent, copy)) {
        delete copy;
        return nullptr;
    }
    CopyOwn(source, *copy);
    return copy;
}

/// All but the children; a name that the target has already is that of the source.
void XMLBuilder::CopyOwn(const CXMLNode& source, CXMLNode& target) {
    if (target.name == nullptr && source.name != nullptr)
        SetName(target, source.name);
    CopyValues(source.headerProperties, target.headerProperties);
    CopyValues(source.contentStrings, target.contentStrings);
    target.sequenceNumber = source.sequenceNumber;
    target.progressCallback = source.progressCallback;
    target.progressUser = source.progressUser;
    target.fileSize = source.fileSize;
    target.nodeLength = source.nodeLength;
    target.shouldDeHTMLify = source.shouldDeHTMLify;
}

void XMLBuilder::CopyValues(const PtrArray<CXMLValue>& source, PtrArray<CXMLValue>& target) {
    for (const CXMLValue* value : source) {
        CXMLValue* copy = MakeValue(value->FieldName(), value->Value());
        if (copy != nullptr)
            copy->SetSequenceNumber(value->SequenceNumber());
        Append(target, copy);
    }
}

} // namespace vtr

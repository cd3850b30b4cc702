#include "utilities/xml/XMLBuilder.h"

#include "utilities/xml/XMLText.h"

#include <cstring>

namespace vtr {

namespace {

/// A node and room for what most nodes hold, so that few lists are blocks of their own. It is
/// deleted as the node that it begins with.
struct RoomyNode {
    CXMLNode node;
    CXMLNode* children[2];
    CXMLValue* headerProperties[2];
    CXMLValue* contentStrings[1];
};

} // namespace

XMLBuilder::Text::Text(const char* terminated)
    : start(terminated), length(terminated != nullptr ? std::strlen(terminated) : 0) {}

char* XMLBuilder::Text::CopyTo(char*& room) const {
    if (start == nullptr)
        return nullptr;
    char* copy = room;
    std::memcpy(copy, start, length);
    copy[length] = '\0';
    room += length + 1;
    return copy;
}

CXMLNode* XMLBuilder::MakeNode(std::string_view name) {
    const std::size_t room = name.empty() ? 0 : name.size() + 1;
    char* place = static_cast<char*>(storage.Take(sizeof(RoomyNode) + room));
    if (place == nullptr)
        return nullptr;
    RoomyNode* made = new (static_cast<void*>(place)) RoomyNode;
    CXMLNode* node = &made->node;
    node->children.Borrow(made->children);
    node->headerProperties.Borrow(made->headerProperties);
    node->contentStrings.Borrow(made->contentStrings);
    if (room > 0) {
        char* behind = place + sizeof(RoomyNode);
        node->name = Text(name).CopyTo(behind);
        node->nameInBlock = true;
    }
    return node;
}

bool XMLBuilder::SetName(CXMLNode& node, std::string_view name) {
    char* copy = CopyXMLText(name);
    if (copy == nullptr)
        return false;
    ReplaceXMLText(node.name, node.nameInBlock, copy);
    return true;
}

CXMLValue* XMLBuilder::MakeValue(Text fieldName, Text value) {
    char* place =
        static_cast<char*>(storage.Take(sizeof(CXMLValue) + fieldName.Room() + value.Room()));
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
bool XMLBuilder::Append(PtrArray<CXMLValue>& values, CXMLValue* value) {
    if (value != nullptr && values.Append(value))
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
    CXMLNode* copy = MakeNode(source.name != nullptr ? source.name : "");
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

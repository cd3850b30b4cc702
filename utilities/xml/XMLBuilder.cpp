#include "utilities/xml/XMLBuilder.h"

#include "common/Require.h"
#include "utilities/xml/XMLInternals.h"
#include "utilities/xml/XMLText.h"

#include <cstring>

namespace vtr {

using Nodes = XMLNodeInternals;

namespace {

/// Lets a list use the slots at `place`, which moves past them.
template <class Item>
void LendSlots(Pointers<Item> list, unsigned count, char*& place) {
    list.Borrow(reinterpret_cast<Item**>(place), count);
    place += count * sizeof(Item*);
}

} // namespace

XMLBuilder::Text::Text(const char* terminated)
    : start(terminated), length(terminated != nullptr ? std::strlen(terminated) : 0) {}

char* XMLBuilder::Text::CopyTo(char*& room) const {
    return start != nullptr ? PutText(start, length, room) : nullptr;
}

CXMLNode* XMLBuilder::MakeNode(std::string_view name, Room room) {
    const std::size_t slots = room.children + room.headerProperties + room.contentStrings;
    const std::size_t nameSize = name.empty() ? 0 : name.size() + 1;
    char* at = static_cast<char*>(nodes.Take(sizeof(CXMLNode) + slots * sizeof(void*) + nameSize));
    if (at == nullptr)
        return nullptr;
    CXMLNode* node = new (static_cast<void*>(at)) CXMLNode;
    at += sizeof(CXMLNode);
    LendSlots(Nodes::Children(*node), room.children, at);
    LendSlots(Nodes::HeaderProperties(*node), room.headerProperties, at);
    LendSlots(Nodes::ContentStrings(*node), room.contentStrings, at);
    if (nameSize > 0)
        Nodes::TakeName(*node, Text(name).CopyTo(at), name.size(), /*inBlock=*/true);
    return node;
}

bool XMLBuilder::SetName(CXMLNode& node, std::string_view name) {
    char* copy = CopyXMLText(name);
    if (copy == nullptr)
        return false;
    Nodes::TakeName(node, copy, name.size(), /*inBlock=*/false);
    return true;
}

CXMLValue* XMLBuilder::MakeValue(Text fieldName, Text value) {
    char* place =
        static_cast<char*>(values.Take(sizeof(CXMLValue) + fieldName.Room() + value.Room()));
    if (place == nullptr)
        return nullptr;
    CXMLValue* made = new (static_cast<void*>(place)) CXMLValue;
    char* at = place + sizeof(CXMLValue);
    char* const fieldNameCopy = fieldName.CopyTo(at);
    Internals<CXMLValue>::TakeTexts(*made, fieldNameCopy, value.CopyTo(at));
    return made;
}

/// Deletes a value that cannot be appended.
bool XMLBuilder::Append(Pointers<CXMLValue> list, CXMLValue* value) {
    if (value != nullptr && list.Append(value))
        return true;
    delete value;
    return false;
}

bool XMLBuilder::AddHeaderProperty(CXMLNode& node, std::string_view name, std::string_view value) {
    return Append(Nodes::HeaderProperties(node), MakeValue(name, value));
}

bool XMLBuilder::AddContent(CXMLNode& node, const char* fieldName, std::string_view text) {
    const unsigned number = node.NumContentStrings() + node.NumChildren();
    CXMLValue* content = MakeValue(fieldName, text);
    if (content != nullptr)
        content->SetSequenceNumber(static_cast<int>(number));
    return Append(Nodes::ContentStrings(node), content);
}

bool XMLBuilder::AddChild(CXMLNode& node, CXMLNode* child) {
    const unsigned index = node.NumChildren();
    if (!Nodes::Children(node).Append(child))
        return false;
    Nodes::SetParent(*child, node, index);
    child->SetSequenceNumber(static_cast<int>(node.NumContentStrings() + index));
    return true;
}

/// Goes through both trees side by side, in the order of the document.
void XMLBuilder::CopyTree(const CXMLNode& source, CXMLNode& target) {
    VTR_REQUIRE(Nodes::IsEmpty(target));
    CopyOwn(source, target);
    const CXMLNode* from = &source;
    CXMLNode* to = &target;
    for (unsigned next = 0;;) {
        if (const CXMLNode* child = from->GetChild(next)) {
            CXMLNode* copy = CopyChild(*child, *to);
            if (copy == nullptr) {
                ++next;
                continue;
            }
            from = child;
            to = copy;
            next = 0;
        } else if (from == &source) {
            return;
        } else {
            next = Nodes::IndexInParent(*from) + 1;
            from = Nodes::Parent(*from);
            to = Nodes::Parent(*to);
        }
    }
}

CXMLNode* XMLBuilder::CopyChild(const CXMLNode& source, CXMLNode& targetParent) {
    CXMLNode* copy = MakeNode(source.Name() != nullptr ? source.Name() : "",
                              {.children = source.NumChildren(),
                               .headerProperties = source.NumHeaderProperties(),
                               .contentStrings = source.NumContentStrings()});
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
    if (target.Name() == nullptr && source.Name() != nullptr)
        SetName(target, source.Name());
    CopyValues(Nodes::HeaderProperties(source), Nodes::HeaderProperties(target));
    CopyValues(Nodes::ContentStrings(source), Nodes::ContentStrings(target));
    Nodes::CopyPlainFields(source, target);
}

void XMLBuilder::CopyValues(ConstPointers<CXMLValue> source, Pointers<CXMLValue> target) {
    for (const CXMLValue* value : source) {
        CXMLValue* copy = MakeValue(value->FieldName(), value->Value());
        if (copy != nullptr)
            copy->SetSequenceNumber(value->SequenceNumber());
        Append(target, copy);
    }
}

} // namespace vtr

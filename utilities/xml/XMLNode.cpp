#include "utilities/xml/XMLNode.h"

#include "common/Require.h"
#include "utilities/xml/XMLBuilder.h"
#include "utilities/xml/XMLInternals.h"
#include "utilities/xml/XMLStorage.h"
#include "utilities/xml/XMLText.h"

#include <cstdlib>
#include <utility>

using Internals = vtr::XMLNodeInternals;

CXMLNode::CXMLNode() noexcept
    : name(nullptr), sequenceNumber(-1), progressCallback(nullptr), progressUser(nullptr),
      fileSize(0), nodeLength(0), shouldDeHTMLify(false), nameInBlock(false), nameKey(0),
      indexInParent(0), parent(nullptr) {}

CXMLNode::CXMLNode(const CXMLNode& other) noexcept : CXMLNode() {
    vtr::XMLBuilder().CopyTree(other, *this);
}

CXMLNode& CXMLNode::operator=(const CXMLNode& other) noexcept {
    if (this != &other) {
        // The other may be a descendant.
        CXMLNode copy(other);
        Internals::Clear(*this);
        Internals::MoveContents(copy, *this);
    }
    return *this;
}

CXMLNode::~CXMLNode() {
    Internals::Clear(*this);
}

void Internals::MoveContents(CXMLNode& source, CXMLNode& target) {
    VTR_REQUIRE(IsEmpty(target));
    Children(target).Swap(source.children);
    HeaderProperties(target).Swap(source.headerProperties);
    ContentStrings(target).Swap(source.contentStrings);
    for (CXMLNode* child : Children(target))
        child->parent = &target;
    std::swap(target.name, source.name);
    std::swap(target.nameInBlock, source.nameInBlock);
    std::swap(target.nameKey, source.nameKey);
    CopyPlainFields(source, target);
}

void Internals::TakeName(CXMLNode& node, char* text, std::size_t length, bool inBlock) {
    vtr::TakeText(node.name, node.nameInBlock, text);
    node.nameInBlock = inBlock;
    node.nameKey = vtr::XMLNameKey(std::string_view(text, length));
}

void Internals::Clear(CXMLNode& node) {
    DeleteChildren(node);
    for (CXMLValue* property : HeaderProperties(node))
        delete property;
    for (CXMLValue* content : ContentStrings(node))
        delete content;
    node.EmptyChildrenNoDelete();
    TakeName(node, nullptr, 0, /*inBlock=*/false);
}

CXMLNode* Internals::FirstLeaf(CXMLNode* node) {
    while (CXMLNode* child = node->GetChild(0))
        node = child;
    return node;
}

/// Each node after its children, without recursion, and near the order in which they lie in
/// memory. The top keeps pointers to what has been deleted.
void Internals::DeleteChildren(CXMLNode& top) {
    CXMLNode* node = FirstLeaf(&top);
    while (node != &top) {
        CXMLNode* next = NextSibling(*node);
        next = next != nullptr ? FirstLeaf(next) : node->parent;
        // Its children have been deleted already.
        Children(*node).Forget();
        delete node;
        node = next;
    }
    Children(top).Forget();
}

void CXMLNode::EmptyChildrenNoDelete() noexcept {
    Internals::Children(*this).Reset();
    Internals::HeaderProperties(*this).Reset();
    Internals::ContentStrings(*this).Reset();
}

void CXMLNode::DeHTMLify(bool recursive) noexcept {
    const CXMLNode* node = this;
    do {
        Internals::DeHTMLifyOwn(const_cast<CXMLNode&>(*node));
        node = recursive ? Internals::Next(node, this, /*descend=*/true) : nullptr;
    } while (node != nullptr);
}

void Internals::DeHTMLifyOwn(CXMLNode& node) {
    if (node.name != nullptr) {
        vtr::DeHTMLifyXMLText(node.name);
        node.nameKey = vtr::XMLNameKey(node.name);
    }
    for (CXMLValue* property : HeaderProperties(node))
        property->DeHTMLify();
    for (CXMLValue* content : ContentStrings(node))
        content->DeHTMLify();
}

VTR_OWN_MEMORY(CXMLNode, vtr::XMLStorage::TakeAlone, vtr::XMLStorage::Release);

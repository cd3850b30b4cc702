#include "utilities/xml/XMLNode.h"

#include "common/Require.h"
#include "utilities/xml/XMLBuilder.h"
#include "utilities/xml/XMLStorage.h"
#include "utilities/xml/XMLText.h"

#include <cstdlib>
#include <utility>

template <>
struct vtr::Layout<CXMLNode> {
    static_assert(offsetof(CXMLNode, children) == 0);
    static_assert(offsetof(CXMLNode, headerProperties) == 16);
    static_assert(offsetof(CXMLNode, contentStrings) == 32);
    static_assert(offsetof(CXMLNode, name) == 48);
    static_assert(offsetof(CXMLNode, sequenceNumber) == 56);
    static_assert(offsetof(CXMLNode, progressCallback) == 64);
    static_assert(offsetof(CXMLNode, progressUser) == 72);
    static_assert(offsetof(CXMLNode, fileSize) == 80);
    static_assert(offsetof(CXMLNode, nodeLength) == 84);
    static_assert(offsetof(CXMLNode, shouldDeHTMLify) == 88);
};

namespace {

CXMLNode* FirstLeaf(CXMLNode* node) {
    while (CXMLNode* child = node->GetChild(0))
        node = child;
    return node;
}

template <class Item>
void KeepItem(Item* /*item*/) {}

} // namespace

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
        Clear();
        TakeContents(copy);
    }
    return *this;
}

CXMLNode::~CXMLNode() {
    DeleteContents();
}

/// Requires: empty, as after `Clear`.
void CXMLNode::TakeContents(CXMLNode& other) noexcept {
    VTR_REQUIRE(name == nullptr && children.Count() == 0 && headerProperties.Count() == 0 &&
                contentStrings.Count() == 0);
    children.Swap(other.children);
    headerProperties.Swap(other.headerProperties);
    contentStrings.Swap(other.contentStrings);
    for (CXMLNode* child : children)
        child->parent = this;
    std::swap(name, other.name);
    std::swap(nameInBlock, other.nameInBlock);
    std::swap(nameKey, other.nameKey);
    sequenceNumber = other.sequenceNumber;
    progressCallback = other.progressCallback;
    progressUser = other.progressUser;
    fileSize = other.fileSize;
    nodeLength = other.nodeLength;
    shouldDeHTMLify = other.shouldDeHTMLify;
}

/// Takes a text that the node frees later, unless it is part of a block; null for none.
void CXMLNode::TakeName(char* text, std::size_t length, bool inBlock) noexcept {
    vtr::ReplaceXMLText(name, nameInBlock, text);
    nameInBlock = inBlock;
    nameKey = vtr::XMLNameKey(std::string_view(text, length));
}

void CXMLNode::Clear() noexcept {
    DeleteContents();
    EmptyChildrenNoDelete();
    name = nullptr;
    nameInBlock = false;
    nameKey = 0;
}

/// Leaves pointers to what has been deleted.
void CXMLNode::DeleteContents() noexcept {
    DeleteChildren();
    for (CXMLValue* property : headerProperties)
        delete property;
    for (CXMLValue* content : contentStrings)
        delete content;
    if (!nameInBlock)
        std::free(name);
}

/// Each node behind its children, without recursion, and near the order in which they lie in
/// memory.
void CXMLNode::DeleteChildren() noexcept {
    CXMLNode* node = FirstLeaf(this);
    while (node != this) {
        CXMLNode* next = node->NextSibling();
        next = next != nullptr ? FirstLeaf(next) : node->parent;
        // Its children have gone already.
        node->children.Forget();
        delete node;
        node = next;
    }
    children.Forget();
}

void CXMLNode::EmptyChildrenNoDelete() noexcept {
    children.Clear(KeepItem<CXMLNode>);
    headerProperties.Clear(KeepItem<CXMLValue>);
    contentStrings.Clear(KeepItem<CXMLValue>);
}

void CXMLNode::DeHTMLify(bool recursive) noexcept {
    for (CXMLNode* node = this; node != nullptr;
         node = recursive ? const_cast<CXMLNode*>(Next(node, this, /*descend=*/true)) : nullptr)
        node->DeHTMLifyOwn();
}

void CXMLNode::DeHTMLifyOwn() noexcept {
    if (name != nullptr) {
        vtr::DeHTMLifyXMLText(name);
        nameKey = vtr::XMLNameKey(name);
    }
    for (CXMLValue* property : headerProperties)
        property->DeHTMLify();
    for (CXMLValue* content : contentStrings)
        content->DeHTMLify();
}

void* CXMLNode::operator new(std::size_t size) noexcept {
    return vtr::XMLStorage::TakeAlone(size);
}

void* CXMLNode::operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return vtr::XMLStorage::TakeAlone(size);
}

void CXMLNode::operator delete(void* object) noexcept {
    vtr::XMLStorage::Release(object);
}

void CXMLNode::operator delete(void* object, const std::nothrow_t&) noexcept {
    vtr::XMLStorage::Release(object);
}

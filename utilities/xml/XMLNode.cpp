#include "utilities/xml/XMLNode.h"

#include "utilities/xml/XMLBuilder.h"
#include "utilities/xml/XMLStorage.h"
#include "utilities/xml/XMLText.h"

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

void DeleteValue(CXMLValue* value) {
    delete value;
}

template <class Item>
void KeepItem(Item* /*item*/) {}

} // namespace

CXMLNode::CXMLNode() noexcept
    : name(nullptr), sequenceNumber(-1), progressCallback(nullptr), progressUser(nullptr),
      fileSize(0), nodeLength(0), shouldDeHTMLify(false), nameInBlock(false), indexInParent(0),
      parent(nullptr) {}

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
    Clear();
}

/// Requires: empty, as after `Clear`.
void CXMLNode::TakeContents(CXMLNode& other) noexcept {
    children.Swap(other.children);
    headerProperties.Swap(other.headerProperties);
    contentStrings.Swap(other.contentStrings);
    for (CXMLNode* child : children)
        child->parent = this;
    std::swap(name, other.name);
    std::swap(nameInBlock, other.nameInBlock);
    sequenceNumber = other.sequenceNumber;
    progressCallback = other.progressCallback;
    progressUser = other.progressUser;
    fileSize = other.fileSize;
    nodeLength = other.nodeLength;
    shouldDeHTMLify = other.shouldDeHTMLify;
}

void CXMLNode::Clear() noexcept {
    DeleteChildren();
    headerProperties.Clear(DeleteValue);
    contentStrings.Clear(DeleteValue);
    vtr::ReplaceXMLText(name, nameInBlock, nullptr);
}

/// Nodes that wait for their end are chained by their parent pointers, so that neither stack nor
/// memory is needed however deep they are nested.
void CXMLNode::DeleteChildren() noexcept {
    CXMLNode* waiting = nullptr;
    const auto chain = [&waiting](CXMLNode* node) {
        node->parent = waiting;
        waiting = node;
    };
    children.Clear(chain);
    while (waiting != nullptr) {
        CXMLNode* node = waiting;
        waiting = node->parent;
        node->children.Clear(chain);
        delete node;
    }
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
    vtr::DeHTMLifyXMLText(name);
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

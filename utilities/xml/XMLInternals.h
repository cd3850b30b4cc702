#ifndef VTRUTILS_XML_XMLINTERNALS_H
#define VTRUTILS_XML_XMLINTERNALS_H

#include "utilities/base/Layout.h"
#include "utilities/base/PtrArray.h"
#include "utilities/xml/XMLNode.h"

#include <cstddef>

/// What the library itself may do to the nodes and values of a document beyond their public
/// functions. Private to the library. One thread at a time, for all that came from one document
/// together.

template <>
struct vtr::Internals<CXMLValue> {
    static_assert(sizeof(CXMLValue) == vtr::ByPointer(24, 16));
    VTR_FIELD_AT(CXMLValue, fieldName, 0);
    VTR_FIELD_AT(CXMLValue, value, 8, 4);
    VTR_FIELD_AT(CXMLValue, sequenceNumber, 16, 8);

    /// Takes texts that are part of the value's own block; null for none. Requires: a value that
    /// has just been made.
    static void TakeTexts(CXMLValue& made, char* fieldName, char* value) {
        made.fieldName = fieldName;
        made.value = value;
        made.fieldNameInBlock = true;
        made.valueInBlock = true;
    }
};

template <>
struct vtr::Internals<CXMLNode> {
    static_assert(sizeof(CXMLNode) == vtr::ByPointer(104, 72));
    VTR_FIELD_AT(CXMLNode, children, 0);
    VTR_FIELD_AT(CXMLNode, headerProperties, 16, 12);
    VTR_FIELD_AT(CXMLNode, contentStrings, 32, 24);
    VTR_FIELD_AT(CXMLNode, name, 48, 36);
    VTR_FIELD_AT(CXMLNode, sequenceNumber, 56, 40);
    VTR_FIELD_AT(CXMLNode, progressCallback, 64, 44);
    VTR_FIELD_AT(CXMLNode, progressUser, 72, 48);
    VTR_FIELD_AT(CXMLNode, fileSize, 80, 52);
    VTR_FIELD_AT(CXMLNode, nodeLength, 84, 56);
    VTR_FIELD_AT(CXMLNode, shouldDeHTMLify, 88, 60);

    using Node = CXMLNode;

    static Pointers<Node> Children(Node& node) { return Pointers<Node>(node.children); }
    static ConstPointers<Node> Children(const Node& node) {
        return ConstPointers<Node>(node.children);
    }
    static Pointers<CXMLValue> HeaderProperties(Node& node) {
        return Pointers<CXMLValue>(node.headerProperties);
    }
    static ConstPointers<CXMLValue> HeaderProperties(const Node& node) {
        return ConstPointers<CXMLValue>(node.headerProperties);
    }
    static Pointers<CXMLValue> ContentStrings(Node& node) {
        return Pointers<CXMLValue>(node.contentStrings);
    }
    static ConstPointers<CXMLValue> ContentStrings(const Node& node) {
        return ConstPointers<CXMLValue>(node.contentStrings);
    }

    static unsigned short NameKey(const Node& node) { return node.nameKey; }

    /// Takes a text that the node frees later, unless it is part of a block; null for none.
    static void TakeName(Node& node, char* text, std::size_t length, bool inBlock);

    /// Null for a node that was never in another; out of date once the parent has given its
    /// children away.
    static Node* Parent(const Node& node) { return node.parent; }
    static unsigned IndexInParent(const Node& node) { return node.indexInParent; }
    static void SetParent(Node& child, Node& parent, unsigned index) {
        child.parent = &parent;
        child.indexInParent = index;
    }

    /// The node after this one in the order of the document, its descendants left out unless
    /// `descend`; null at the end of what `top` holds.
    static const Node* Next(const Node* node, const Node* top, bool descend);

    static void SetProgress(Node& node, Node::ProgressCallback callback, void* user) {
        node.progressCallback = callback;
        node.progressUser = user;
    }
    static void TellProgress(const Node& node, std::size_t position) {
        if (node.progressCallback != nullptr)
            node.progressCallback(static_cast<unsigned>(position), node.fileSize,
                                  node.progressUser);
    }

    /// What a node has from the load that makes it.
    static void CopyLoadFields(const Node& source, Node& target) {
        SetProgress(target, source.progressCallback, source.progressUser);
        target.fileSize = source.fileSize;
        target.shouldDeHTMLify = source.shouldDeHTMLify;
    }
    /// The same, and what else is neither name, text nor child.
    static void CopyPlainFields(const Node& source, Node& target) {
        CopyLoadFields(source, target);
        target.sequenceNumber = source.sequenceNumber;
        target.nodeLength = source.nodeLength;
    }

    static bool IsEmpty(const Node& node) {
        return node.name == nullptr && node.children.count == 0 &&
               node.headerProperties.count == 0 && node.contentStrings.count == 0;
    }

    /// Deletes and forgets name, texts and children.
    static void Clear(Node& node);

    /// Moves all that `source` holds. Requires: an empty target.
    static void MoveContents(Node& source, Node& target);

    static void DeHTMLifyOwn(Node& node);

private:
    static Node* NextSibling(const Node& node) {
        return node.parent->children.At(node.indexInParent + 1);
    }
    static Node* FirstLeaf(Node* node);
    static void DeleteChildren(Node& node);
};

namespace vtr {
using XMLNodeInternals = Internals<CXMLNode>;
}

#endif

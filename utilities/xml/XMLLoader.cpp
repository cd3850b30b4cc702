#include "utilities/xml/XMLLoader.h"

#include "utilities/base/SameText.h"
#include "utilities/xml/XMLInternals.h"
#include "utilities/xml/XMLTagText.h"
#include "utilities/xml/XMLText.h"

#include <algorithm>
#include <cstring>

namespace vtr {

namespace {

/// Tokens that one node reads: its own tag and those that begin its children. A longer list goes on
/// in its parent.
constexpr unsigned mostTokens = 999'999;

/// All bytes above 0x7F count too: what has only letters of other alphabets is not a text.
bool IsBlank(char c) {
    return c == ' ' || static_cast<signed char>(c) <= '\r';
}

bool HasName(const CXMLNode& node, std::string_view other) {
    const char* name = node.Name();
    if (name == nullptr)
        return false;
    // Mostly it is the same, letter by letter.
    if (std::strncmp(name, other.data(), other.size()) == 0)
        return name[other.size()] == '\0';
    if (!MayBeSameXMLName(XMLNodeInternals::NameKey(node), XMLNameKey(other)))
        return false;
    const OwnedText copy(CopyXMLText(other));
    return copy != nullptr && SameText(name, copy.get());
}

} // namespace

void XMLLoader::Run() {
    if (!scanner.Next(position, token))
        return;
    MeetToken();
    ReadOwnTag();
    while (open != nullptr && scanner.Next(position, token)) {
        MeetToken();
        ReadTexts();
        const bool closes = token.startKind == XMLStart::closing && HasName(*open, token.name);
        if (!closes && BeginChild()) {
            MeetToken();
            ReadOwnTag();
            continue;
        }
        position = token.end;
        if (closes)
            Complete();
    }
    // What the end of the text leaves open is complete.
    while (open != nullptr)
        Close();
}

/// A node whose tag has no name takes that of the next token that has one.
void XMLLoader::MeetToken() {
    if (open->Name() == nullptr && !token.name.empty())
        XMLBuilder::SetName(*open, token.name);
    XMLNodeInternals::TellProgress(*open, position);
}

void XMLLoader::ReadOwnTag() {
    const std::string_view tag = text.substr(position, token.end - position);
    const bool isDocType = token.startKind == XMLStart::docType;
    if (isDocType) {
        XMLBuilder::SetName(*open, "DOCTYPE");
        XMLDocTypeItems items(tag);
        for (std::string_view item; items.Next(item);)
            builder.AddContent(*open, nullptr, item);
    } else if (token.hasMoreFields) {
        XMLAttributes attributes(tag, token);
        for (std::string_view name, value; attributes.Next(name, value);) {
            if (!name.empty() && !value.empty())
                builder.AddHeaderProperty(*open, name, value);
        }
    }
    position = token.end;
    if (isDocType || token.endKind == XMLEnd::closed)
        Complete();
}

void XMLLoader::ReadTexts() {
    const std::string_view between = token.afterComment
                                         ? WithoutComments(position, token.start)
                                         : text.substr(position, token.start - position);
    if (!std::all_of(between.begin(), between.end(), IsBlank))
        builder.AddContent(*open, open->Name(), between);
}

/// Valid until the next call; empty when memory runs out.
std::string_view XMLLoader::WithoutComments(std::size_t from, std::size_t to) {
    if (to - from > scratchSize) {
        scratchSize = 0;
        scratch.reset(static_cast<char*>(std::malloc(to - from)));
        if (scratch == nullptr)
            return {};
        scratchSize = to - from;
    }
    std::size_t length = 0;
    while (from < to) {
        const std::size_t comment = std::min(text.find('<', from), to);
        std::memcpy(scratch.get() + length, text.data() + from, comment - from);
        length += comment - from;
        from = comment < to ? scanner.AfterComment(comment) : to;
    }
    return {scratch.get(), length};
}

/// Opens a child whose own tag is the token. False when memory runs out.
bool XMLLoader::BeginChild() {
    const bool isClosed = token.endKind == XMLEnd::closed;
    CXMLNode* child =
        builder.MakeNode(token.name, {.children = isClosed ? 0U : 2U,
                                      .headerProperties = token.hasMoreFields ? 2U : 0U,
                                      .contentStrings = isClosed ? 0U : 1U});
    if (child == nullptr)
        return false;
    XMLNodeInternals::SetParent(*child, *open, open->NumChildren());
    XMLNodeInternals::CopyLoadFields(*open, *child);
    open = child;
    return true;
}

/// Closes the open node, and its parents as far as it was the last token that they read.
void XMLLoader::Complete() {
    do
        Close();
    while (open != nullptr && 1 + open->NumChildren() >= mostTokens);
}

/// Hands the open node to its parent, which is open then.
void XMLLoader::Close() {
    CXMLNode* node = open;
    open = node == &root ? nullptr : XMLNodeInternals::Parent(*node);
    if (open == nullptr)
        return;
    if (!XMLBuilder::AddChild(*open, node))
        delete node;
    else if (open->ShouldDeHTMLify())
        node->DeHTMLify(/*recursive=*/false);
}

} // namespace vtr

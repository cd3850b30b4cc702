#include "gallery/pages/xml/XmlModel.h"

#include "gallery/app/Stopwatch.h"
#include "gallery/text/Text.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace gallery {

namespace {

/// In one line, as far as a window could show it.
std::wstring OneLine(const char* text, std::size_t longest) {
    if (text == nullptr)
        return {};
    std::wstring line = Widen(std::string(text, strnlen(text, longest)).c_str());
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c < L' '; }, L' ');
    return line;
}

constexpr std::size_t longestValue = 2000;
constexpr std::size_t longestSummary = 80;

} // namespace

bool XmlModel::DecodeReferences(bool on) {
    decodes = on;
    if (!Loaded() || Load(std::wstring(Path()), IsCopy()))
        return true;
    decodes = !on;
    return false;
}

bool XmlModel::Read(const std::string& path) {
    auto fresh = std::make_unique<CXMLFile>();
    fresh->SetShouldDeHTMLify(decodes);
    const Stopwatch stopwatch;
    if (!fresh->Open(path.c_str()))
        return false;
    milliseconds = stopwatch.Milliseconds();
    document = std::move(fresh);
    ListElements();
    return true;
}

/// The parents listed so far stand in place of recursion: elements may be nested to any depth.
void XmlModel::ListElements() {
    elements.clear();
    attributes = 0;
    texts = 0;
    struct Open {
        int element;
        unsigned nextChild;
    };
    std::vector<Open> open;
    const auto begin = [&](const CXMLNode* node) {
        const int parent = open.empty() ? -1 : open.back().element;
        open.push_back({Elements(), 0});
        elements.push_back({node, parent, 0});
        attributes += static_cast<int>(node->NumHeaderProperties());
        texts += static_cast<int>(node->NumContentStrings());
    };
    begin(document.get());
    while (!open.empty()) {
        const CXMLNode* child = At(open.back().element).node->GetChild(open.back().nextChild++);
        if (child != nullptr) {
            begin(child);
        } else {
            elements[static_cast<std::size_t>(open.back().element)].end = Elements();
            open.pop_back();
        }
    }
}

int XmlModel::FirstChild(int element) const {
    return element + 1 < At(element).end ? element + 1 : -1;
}

int XmlModel::NextSibling(int element) const {
    const int parent = Parent(element);
    const int next = At(element).end;
    return parent >= 0 && next < At(parent).end ? next : -1;
}

int XmlModel::Depth(int element) const {
    int depth = 0;
    while ((element = Parent(element)) >= 0)
        ++depth;
    return depth;
}

std::wstring XmlModel::Name(int element) const {
    return OneLine(At(element).node->Name(), longestValue);
}

std::wstring XmlModel::Summary(int element) const {
    const CXMLNode& node = *At(element).node;
    std::wstring summary = OneLine(node.Name(), longestSummary);
    if (const CXMLValue* text = node.GetContent(0))
        return summary + L": " + OneLine(text->Value(), longestSummary);
    if (const CXMLValue* attribute = node.GetHeaderProperty(0))
        summary += L"  " + OneLine(attribute->FieldName(), longestSummary) + L"=\"" +
                   OneLine(attribute->Value(), longestSummary) + L"\"";
    return summary;
}

int XmlModel::Details(int element) const {
    if (element < 0 || element >= Elements())
        return 0;
    const CXMLNode& node = *At(element).node;
    return static_cast<int>(node.NumHeaderProperties() + node.NumContentStrings());
}

XmlModel::Detail XmlModel::DetailOf(int element, int index) const {
    const CXMLNode& node = *At(element).node;
    const unsigned place = static_cast<unsigned>(index);
    const unsigned count = node.NumHeaderProperties();
    const bool attribute = place < count;
    const CXMLValue* detail =
        attribute ? node.GetHeaderProperty(place) : node.GetContent(place - count);
    if (detail == nullptr)
        return {attribute, {}, {}};
    return {attribute, OneLine(detail->FieldName(), longestValue),
            OneLine(detail->Value(), longestValue)};
}

bool XmlModel::Holds(int element, const std::wstring& lower) const {
    const CXMLNode& node = *At(element).node;
    const auto holds = [&](const char* text) {
        return text != nullptr && LowerCase(Widen(text)).find(lower) != std::wstring::npos;
    };
    if (holds(node.Name()))
        return true;
    for (unsigned i = 0; i < node.NumHeaderProperties(); ++i) {
        const CXMLValue& attribute = *node.GetHeaderProperty(i);
        if (holds(attribute.FieldName()) || holds(attribute.Value()))
            return true;
    }
    for (unsigned i = 0; i < node.NumContentStrings(); ++i) {
        if (holds(node.GetContent(i)->Value()))
            return true;
    }
    return false;
}

XmlModel::Match XmlModel::Find(const std::wstring& text, int after) const {
    Match match;
    const std::wstring lower = LowerCase(text);
    for (int i = 0; i < Elements(); ++i) {
        if (!Holds(i, lower))
            continue;
        ++match.count;
        const bool firstBehind = match.element <= after && i > after;
        if (match.element < 0 || firstBehind) {
            match.element = i;
            match.number = match.count;
        }
    }
    return match;
}

} // namespace gallery

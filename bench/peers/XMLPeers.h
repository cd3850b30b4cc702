#ifndef VTRUTILS_BENCH_PEERS_XMLPEERS_H
#define VTRUTILS_BENCH_PEERS_XMLPEERS_H

#include <cstring>
#include <pugixml.hpp>
#include <tinyxml2.h>

/// XML documents with the operations that are measured. Names compare exactly, which costs less
/// than ours.

namespace bench {

class TinyXml2 {
public:
    static constexpr char name[] = "tinyxml2";

    bool Load(const char* path) { return document.LoadFile(path) == tinyxml2::XML_SUCCESS; }

    std::size_t Count() const { return Count(Top()); }

    const char* Find(const char* wanted) const { return Text(Find(Top(), wanted)); }

    /// Calls `visit` with the text of the named child of each element below the top one's first.
    template <class Visit>
    void ForEachText(const char* wanted, Visit visit) const {
        for (auto* e = Top()->FirstChildElement()->FirstChildElement(); e != nullptr;
             e = e->NextSiblingElement())
            visit(Text(e->FirstChildElement(wanted)));
    }

private:
    using Element = tinyxml2::XMLElement;

    const Element* Top() const { return document.RootElement(); }
    static const char* Text(const Element* element) {
        return element != nullptr ? element->GetText() : nullptr;
    }
    static std::size_t Count(const Element* element) {
        std::size_t count = 1;
        for (auto* e = element->FirstChildElement(); e != nullptr; e = e->NextSiblingElement())
            count += Count(e);
        return count;
    }
    static const Element* Find(const Element* element, const char* wanted) {
        if (std::strcmp(element->Name(), wanted) == 0)
            return element;
        for (auto* e = element->FirstChildElement(); e != nullptr; e = e->NextSiblingElement()) {
            const Element* found = Find(e, wanted);
            if (found != nullptr)
                return found;
        }
        return nullptr;
    }

    tinyxml2::XMLDocument document;
};

class PugiXml {
public:
    static constexpr char name[] = "pugixml";

    bool Load(const char* path) { return document.load_file(path); }

    std::size_t Count() const { return Count(document.document_element()); }

    const char* Find(const char* wanted) const {
        return Text(document.find_node(
            [wanted](pugi::xml_node node) { return std::strcmp(node.name(), wanted) == 0; }));
    }

    template <class Visit>
    void ForEachText(const char* wanted, Visit visit) const {
        for (const pugi::xml_node& node : document.document_element().first_child().children())
            visit(Text(node.child(wanted)));
    }

private:
    static const char* Text(const pugi::xml_node& node) {
        return node ? node.child_value() : nullptr;
    }
    static std::size_t Count(const pugi::xml_node& node) {
        if (node.type() != pugi::node_element)
            return 0;
        std::size_t count = 1;
        for (const pugi::xml_node& child : node.children())
            count += Count(child);
        return count;
    }

    pugi::xml_document document;
};

} // namespace bench

#endif

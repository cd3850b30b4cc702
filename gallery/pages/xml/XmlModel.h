#ifndef VTRUTILS_GALLERY_PAGES_XML_XMLMODEL_H
#define VTRUTILS_GALLERY_PAGES_XML_XMLMODEL_H

#include "gallery/app/Document.h"
#include "utilities/xml/XMLFile.h"

#include <memory>
#include <string>
#include <vector>

namespace gallery {

/// The XML document that the page shows, in the wide texts that windows want: its elements in the
/// order in which they open, each with its index. One thread at a time.
class XmlModel final : public Document {
public:
    /// An attribute or a text of an element.
    struct Detail {
        bool attribute;
        std::wstring name;
        std::wstring value;
    };

    struct Match {
        int element = -1;
        int number = 0; ///< of `count`, in the order of the document, from 1
        int count = 0;  ///< 0: there is none
    };

    /// Loads the document again if there is one. False, with all as it was, when that fails.
    bool DecodeReferences(bool on);
    bool Decodes() const { return decodes; }

    double LoadMilliseconds() const { return milliseconds; }
    int Elements() const { return static_cast<int>(elements.size()); }
    int Attributes() const { return attributes; }
    int Texts() const { return texts; }

    /// -1 for the parent of the first element and what comes after the last child of one.
    int Parent(int element) const { return At(element).parent; }
    int FirstChild(int element) const;
    int NextSibling(int element) const;
    /// 0 for the first element.
    int Depth(int element) const;

    std::wstring Name(int element) const;
    /// The name with the element's text, or else its first attribute; not too long for a tree.
    std::wstring Summary(int element) const;

    /// Attributes first. 0 for an element that is not there.
    int Details(int element) const;
    Detail DetailOf(int element, int index) const;

    /// The next element that holds the text in its name, its attributes or its own texts, ignoring
    /// case, after `after` and then from the start.
    Match Find(const std::wstring& text, int after) const;

private:
    struct Element {
        const CXMLNode* node;
        int parent;
        int end; ///< the index after its last descendant
    };

    bool Read(const std::string& path) override;
    void ListElements();
    bool Holds(int element, const std::wstring& lower) const;
    const Element& At(int element) const { return elements[static_cast<std::size_t>(element)]; }

    std::unique_ptr<CXMLFile> document;
    std::vector<Element> elements;
    int attributes = 0;
    int texts = 0;
    bool decodes = false;
    double milliseconds = 0;
};

} // namespace gallery

#endif

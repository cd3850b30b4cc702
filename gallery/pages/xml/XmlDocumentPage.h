#ifndef VTRUTILS_GALLERY_PAGES_XML_XMLDOCUMENTPAGE_H
#define VTRUTILS_GALLERY_PAGES_XML_XMLDOCUMENTPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// The elements of an XML document as a tree, with the attributes and texts of one: find by name,
/// decode references. One thread at a time.
std::unique_ptr<Page> MakeXmlDocumentPage();

} // namespace gallery

#endif

#ifndef VTRUTILS_XML_XMLSCANNER_H
#define VTRUTILS_XML_XMLSCANNER_H

#include <cstddef>
#include <string_view>

/// The tokens of an XML text. Private to the library. Immutable and safe.

namespace vtr {

/// How a token starts and ends. At each "<" the first start that fits is taken, at each place the
/// first end.
enum class XMLStart { declaration, closing, docType, element };
enum class XMLEnd { declaration, closed, open };

/// One tag, with views into the text.
struct XMLToken {
    std::size_t start = 0; ///< of its "<"
    std::size_t end = 0;   ///< after its ">"
    XMLStart startKind = XMLStart::element;
    XMLEnd endKind = XMLEnd::open;
    std::string_view inside;    ///< what is between its start and its end
    std::string_view name;      ///< may be empty
    bool hasMoreFields = false; ///< attributes may follow the name
    bool hasApostrophe = false; ///< one is inside
    bool afterComment = false;  ///< comments are between where the search began and the token
};

class XMLScanner {
public:
    explicit XMLScanner(std::string_view whole) : text(whole) {}

    /// The first token at or after `from`; comments are skipped. False if none is left that has an
    /// end. A quote of either kind within a tag hides its end until the next quote of that kind,
    /// even if it is between quotes of the other kind.
    bool Next(std::size_t from, XMLToken& token) const;

    /// The place after the comment that starts at `at`; `at` itself if none does, npos if it has no
    /// end.
    std::size_t AfterComment(std::size_t at) const;

private:
    std::string_view text;
};

/// The place after a start at `at`; `at` itself if none fits there.
std::size_t AfterXMLStart(std::string_view text, std::size_t at, XMLStart& kind);

/// Where the first end outside quotes begins, from `from` on; npos if there is none. Double quotes
/// hide ends, and so do apostrophes with `anyQuote`.
struct XMLEndPlace {
    std::size_t at;
    XMLEnd kind;
    bool hasApostrophe; ///< one is between `from` and the end
};
XMLEndPlace FindXMLEnd(std::string_view text, std::size_t from, bool anyQuote);

/// Without spaces, CR and LF at both ends.
std::string_view TrimXMLText(std::string_view text);

/// "<!DOCTYPE", which is compared without regard to case.
inline constexpr std::string_view docTypeStart = "<!DOCTYPE";

} // namespace vtr

#endif

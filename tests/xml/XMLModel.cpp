#include "tests/xml/XMLModel.h"

#include <cstring>
#include <memory>
#include <vector>

namespace {

std::string Text(const char* text) {
    return text != nullptr ? text : "~";
}

std::string Piece(const char* fieldName, const std::string& value, int number) {
    return "\"" + Text(fieldName) + ":" + value + "\"#" + std::to_string(number) + " ";
}

struct Token {
    std::size_t start = 0;
    std::size_t end = 0;
    unsigned startKind = 0;
    unsigned endKind = 0;
    bool more = false;
    std::string name;
};

struct Comment {
    std::size_t start;
    std::size_t end;
};

struct ModelNode {
    std::string name;
    int number = 0;
    std::string attributes;
    std::string texts;
    std::string children;
    int count = 0;

    std::string Shown() const {
        return (name.empty() ? "~" : name) + "#" + std::to_string(number) + "(" + attributes +
               ")[" + texts + children + "]";
    }
};

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \r\n");
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \r\n") + 1 - first);
}

class Model {
public:
    Model(const std::string& whole, unsigned limit) : text(whole), maxTokens(limit) {}

    bool Load(ModelNode& node) {
        bool seen = false;
        for (unsigned count = 0; count < maxTokens; ++count) {
            Token token;
            if (!Next(token))
                return seen;
            if (node.name.empty())
                node.name = token.name;
            const std::string tag = text.substr(position, token.end - position);
            if (!seen) {
                if (token.startKind == 2)
                    DocType(node, tag);
                else if (token.more)
                    Attributes(node, tag);
                position = token.end;
                if (token.startKind == 2 || token.endKind == 1)
                    return true;
                seen = true;
                continue;
            }
            Texts(node, token);
            if (token.startKind == 1 && !node.name.empty() &&
                _stricmp(token.name.c_str(), node.name.c_str()) == 0) {
                position = token.end;
                return true;
            }
            ModelNode child;
            if (Load(child)) {
                child.number = node.count++;
                node.children += child.Shown();
            }
        }
        return true;
    }

private:
    bool Is(std::size_t at, const char* token, bool spare) const {
        const std::size_t length = std::strlen(token);
        return at + length + (spare ? 1 : 0) <= text.size() &&
               _strnicmp(text.c_str() + at, token, length) == 0;
    }

    bool Next(Token& token) {
        static constexpr const char* starts[] = {"<?", "</", "<!DOCTYPE", "<"};
        static constexpr const char* ends[] = {"?>", "/>", ">"};
        comments.clear();
        bool inComment = false;
        bool found = false;
        std::size_t at = position;
        while (at < text.size() && !found) {
            if (inComment) {
                inComment = !Is(at, "-->", true);
                at += inComment ? 1 : 3;
                comments.back().end = at;
                continue;
            }
            if (Is(at, "<!--", true)) {
                inComment = true;
                comments.push_back({at, at + 4});
                at += 4;
                continue;
            }
            for (unsigned kind = 0; kind < 4 && !found; ++kind) {
                if (Is(at, starts[kind], true)) {
                    found = true;
                    token.start = at;
                    token.startKind = kind;
                    at += std::strlen(starts[kind]);
                }
            }
            at += found ? 0 : 1;
        }
        if (!found)
            return false;
        bool one = false;
        bool two = false;
        for (std::size_t i = at; i < text.size(); ++i) {
            two ^= text[i] == '"';
            one ^= text[i] == '\'';
            for (unsigned kind = 0; kind < 3 && !one && !two; ++kind) {
                if (Is(i, ends[kind], false)) {
                    token.endKind = kind;
                    token.end = i + std::strlen(ends[kind]);
                    Field(text.substr(at, i - at), token);
                    return true;
                }
            }
        }
        return false;
    }

    static void Field(const std::string& field, Token& token) {
        bool letter = false;
        for (std::size_t i = 0; i < field.size() && !(letter && field[i] == ' '); ++i) {
            letter = letter || field[i] != ' ';
            if (token.name.size() < 4094)
                token.name += field[i];
        }
        bool one = false;
        bool two = false;
        std::size_t equals = 0;
        for (std::size_t i = 0; i < field.size() && equals == 0; ++i) {
            two ^= field[i] == '"';
            one ^= field[i] == '\'';
            if (one || two)
                continue;
            if (field[i] == ' ' && field.find_first_not_of(' ', i) != field.npos) {
                token.more = true;
                return;
            }
            if (field[i] == '=') {
                if (i == 0)
                    break;
                equals = i;
            }
        }
        if (equals > 0) {
            const std::size_t open = field.find_first_of("'\"", equals + 1);
            if (open == field.npos || field.find(field[open], open + 1) == field.npos)
                return;
            if (equals < 4096)
                token.name = field.substr(0, equals);
        }
        token.name = Trimmed(token.name);
    }

    static void Attributes(ModelNode& node, const std::string& tag) {
        const Model whole(tag, 0);
        std::size_t start = tag.find('<');
        if (whole.Is(start, "<?", true) || whole.Is(start, "</", true))
            start += 2;
        else
            start += whole.Is(start, "<!DOCTYPE", true) ? 9u : 1u;
        bool quoted = false;
        std::size_t end = start;
        for (; end < tag.size(); ++end) {
            quoted ^= tag[end] == '"';
            if (!quoted && (whole.Is(end, "?>", false) || whole.Is(end, "/>", false) ||
                            whole.Is(end, ">", false)))
                break;
        }
        if (end == tag.size() || end == start)
            return;
        const std::string data = tag.substr(start, end - start);
        std::size_t i = 0;
        const auto take = [&](char stop) {
            std::string taken;
            for (; i < data.size() && data[i] != stop; ++i)
                taken += data[i];
            return taken;
        };
        take(' ');
        while (i < data.size()) {
            while (i < data.size() && data[i] == ' ')
                ++i;
            const std::string name = Trimmed(take('=').substr(0, 4095));
            take('"');
            ++i;
            const std::string value = Trimmed(take('"').substr(0, 4095));
            ++i;
            if (!name.empty() && !value.empty())
                node.attributes += name + "=" + value + ";";
        }
    }

    static void DocType(ModelNode& node, const std::string& tag) {
        node.name = "DOCTYPE";
        std::size_t i = 0;
        while (_strnicmp(tag.c_str() + i, "<!DOCTYPE", 9) != 0)
            ++i;
        i = tag.find(' ', i + 9);
        std::string item;
        char quote = 0;
        const auto finish = [&] {
            node.texts += Piece(nullptr, item.substr(0, 1023), node.count++);
            item.clear();
        };
        for (; i < tag.size(); ++i) {
            const char c = tag[i];
            if (quote != 0 && c == quote) {
                finish();
                quote = 0;
            } else if (quote == 0 && (c == ' ' || c == '"' || c == '\'')) {
                if (!item.empty())
                    finish();
                quote = c == ' ' ? '\0' : c;
            } else if (c != '\r' && c != '\n') {
                item += c;
            }
        }
    }

    void Texts(ModelNode& node, const Token& token) {
        std::string between;
        bool blank = true;
        for (std::size_t i = position; i < token.start; ++i) {
            bool skipped = false;
            for (const Comment& comment : comments)
                skipped = skipped || (i >= comment.start && i < comment.end);
            if (skipped)
                continue;
            between += text[i];
            blank = blank && (text[i] == ' ' || static_cast<signed char>(text[i]) <= 13);
        }
        if (!blank)
            node.texts +=
                Piece(node.name.empty() ? nullptr : node.name.c_str(), between, node.count++);
    }

    const std::string& text;
    unsigned maxTokens;
    std::size_t position = 0;
    std::vector<Comment> comments;
};

} // namespace

std::string Shown(const CXMLNode& node) {
    std::string shown = Text(node.Name()) + "#" + std::to_string(node.SequenceNumber()) + "(";
    for (unsigned i = 0; i < node.NumHeaderProperties(); ++i)
        shown += Text(node.GetHeaderProperty(i)->FieldName()) + "=" +
                 Text(node.GetHeaderProperty(i)->Value()) + ";";
    shown += ")[";
    for (unsigned i = 0; i < node.NumContentStrings(); ++i)
        shown += Piece(node.GetContent(i)->FieldName(), Text(node.GetContentString(i)),
                       node.GetContent(i)->SequenceNumber());
    for (unsigned i = 0; i < node.NumChildren(); ++i)
        shown += Shown(*node.GetChild(i));
    return shown + "]";
}

std::string ShownModel(const std::string& text, unsigned maxTokens) {
    ModelNode root;
    Model(text, maxTokens).Load(root);
    return root.Shown();
}

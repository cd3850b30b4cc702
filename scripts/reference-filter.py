#!/usr/bin/env python3
"""What Doxygen reads for a public header or a guide, given as the argument.

- A comment holds for all functions of its paragraph, down to the next blank line or comment.
- A comment at the top that is followed by a blank line is about the whole header.
- Comments have Markdown, but no commands and no HTML: all other characters mean themselves.
"""
import re
import sys

SCOPE = re.compile(r'\s*(template\s*<.*>\s*)?(class|struct|union|enum|namespace|extern "C")\b')
LINKABLE = re.compile(r"C[A-Z]\w+|\w+(::~?\w+)+")


def escaped(text):
    """Text outside of code spans, with what Doxygen would take for its own made plain."""
    return re.sub(r"([\\<>&@#%$])", r"\\\1", text)


def span(code):
    """A code span; Doxygen links names in HTML's code, but not in Markdown's, where it trips over
    backslashes and quotes."""
    if LINKABLE.fullmatch(code) or "\\" in code or '"' in code:
        return "<code>" + escaped(code).replace('"', '\\"') + "</code>"
    return f"`{code}`"


def with_spans(text, plain):
    """The text with its code spans, and with `plain` applied to what is between them."""
    pieces = text.split("`")
    return "".join(span(p) if i % 2 else plain(p) for i, p in enumerate(pieces))


def comment(line):
    """A line of a comment for Doxygen."""
    start, text = re.match(r"(.*?///<?)(.*)", line).groups()
    return line if text.startswith("     ") else start + with_spans(text, escaped)


def guide(text):
    """A guide for Doxygen: what stands in fences is code, and the text of a link is in one line."""
    pieces = re.split(r"(?ms)(^ *```.*?^ *```$)", text)
    for i in range(0, len(pieces), 2):
        joined_links = re.sub(r"\[([^]\n]*)\n([^]\n]*)\]\(", r"[\1 \2](", pieces[i])
        pieces[i] = with_spans(joined_links, str)
    return "".join(pieces)


def joined(lines):
    """The lines, those with a code span that goes on in the next line together with that."""
    result = []
    for line in lines:
        stripped = line.strip()
        if result and stripped.startswith("///") and result[-1].count("`") % 2 \
                and result[-1].strip().startswith("///"):
            result[-1] += " " + stripped[3:].strip()
        else:
            result.append(line)
    return result


class Header:
    """Goes through the lines of one header."""

    def __init__(self, name, lines):
        self.name = name
        self.lines = joined(lines)
        self.out = []
        self.covering = []  # the comment of this paragraph
        self.enums = []     # for each open scope: whether it is an enumeration
        self.at = 0
        self.fresh = False  # the comment has just been passed on

    def file_comment(self):
        """The comment at the top if it is about the header, which then names it."""
        first = next((i for i, l in enumerate(self.lines) if l.startswith("///")), None)
        after = first
        while after is not None and self.lines[after].startswith("///"):
            after += 1
        if first is not None and self.lines[after].strip() == "":
            return first
        return None

    def run(self):
        about_file = self.file_comment()
        if about_file is None:
            self.out.append(f"/// \\file\n/// `{self.name}`\n")
        while self.at < len(self.lines):
            line = self.lines[self.at]
            stripped = line.strip()
            if self.at == about_file:
                self.out.append("/// \\file")
            if stripped.startswith("///"):
                self.take_comment()
            elif stripped == "" or stripped.startswith(("//", "public:", "protected:", "private:")):
                self.covering = []
                self.pass_on()
            elif stripped.startswith("#"):
                self.take_directive()
            elif stripped.startswith("}"):
                self.covering = []
                self.enums = self.enums[:-1]
                self.pass_on()
            elif self.enums and self.enums[-1]:
                self.pass_on()
            else:
                self.take_declaration()
        return "\n".join(self.out) + "\n"

    def pass_on(self):
        line = self.lines[self.at]
        self.out.append(comment(line) if "///" in line else line)
        self.at += 1

    def take_comment(self):
        self.covering = []
        while self.at < len(self.lines) and self.lines[self.at].strip().startswith("///"):
            self.covering.append(comment(self.lines[self.at]))
            self.at += 1
        self.out += self.covering
        self.fresh = True

    def take_directive(self):
        while self.lines[self.at].endswith("\\"):
            self.pass_on()
        self.pass_on()

    def take_declaration(self):
        """One declaration, up to its semicolon or the end of its body, or the head of a scope."""
        first = self.at
        depth = 0
        while True:
            code = re.sub(r"//.*", "", self.lines[self.at])
            depth += sum(code.count(c) for c in "({") - sum(code.count(c) for c in ")}")
            self.at += 1
            whole = self.lines[first:self.at]
            if depth == 1 and code.rstrip().endswith("{") and SCOPE.match(whole[0]):
                break
            if depth <= 0 and code.rstrip().endswith((";", "}")) or self.at == len(self.lines):
                break
        opens = depth == 1
        if "= default;" in whole[-1] and not self.covering:
            return  # it does what the language says
        function = "(" in whole[0]
        if self.covering and not self.fresh and function and not opens:
            self.out += self.covering
        self.out += [comment(l) if "///" in l else l for l in whole]
        self.fresh = False
        if opens:
            self.enums.append(bool(re.match(r"\s*enum\b", whole[0])))
            self.covering = []


def main():
    name = re.sub(r".*?((?:utilities|vtrfutls)/)", r"\1", sys.argv[1])
    with open(sys.argv[1], encoding="utf-8") as file:
        text = file.read()
    sys.stdout.write(guide(text) if name.endswith(".md") else Header(name, text.splitlines()).run())


main()

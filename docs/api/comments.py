#!/usr/bin/env python3
"""Writes headers as doxygen reads them, under the same names below a folder: comments.py FOLDER HEADER...

The block below `#pragma once` becomes the text of the file, a block right above a declaration that of the declaration,
a comment behind a member that of the member, and a line `// ---- Title ----` begins a group. In a block, lines that
are set in by two blanks or more keep their shape; all else is running text, in which `words` are code and the name of
a header is a reference to it.
"""
import pathlib
import re
import sys

COMMENT = re.compile(r"^( *)//(?: (.*)|)$")
BEHIND = re.compile(r"^(?! *(?:return|if|for|while|case|else|using|namespace|#|\}))(.*[;,\w\]] +)// (.*)$")
SECTION = re.compile(r"^---- (.*?) -+$")
SPECIAL = re.compile(r'([\\@&<>#%"])')


def running(text):
    text = re.sub(r"`(.*?)`", r"<tt>\1</tt>", SPECIAL.sub(r"\\\1", text))
    return re.sub(r"\b(?<!/)(\w+\.h)\b", r"@ref \1", text)


def shaped(lines):
    """The lines of a block: what is set in stays as it is."""
    inside, out = False, []
    for line in lines:
        set_in = line.startswith("  ") or (inside and not line)
        if set_in != inside:
            out.append("@verbatim" if set_in else "@endverbatim")
        inside = set_in
        out.append(line if set_in else running(line))
    return out + ["@endverbatim"] * inside


def block_at(lines, i):
    """The texts of the block of comments that begins at line i; none if it is no comment."""
    texts = []
    while i + len(texts) < len(lines) and (m := COMMENT.match(lines[i + len(texts)])):
        texts.append(m.group(2) or "")
    return texts


def convert(name, lines):
    out, i, grouped = [], 0, False
    while i < len(lines):
        texts = block_at(lines, i)
        behind = BEHIND.match(lines[i]) if not texts else None
        if texts:
            indent = COMMENT.match(lines[i]).group(1)
            declared = lines[i + len(texts)].strip() if i + len(texts) < len(lines) else ""
            section = SECTION.match(texts[0])
            if i and lines[i - 1].strip() == "#pragma once":
                head = ["@mainpage"] if name.endswith("TslBL.h") else ["@file", ""]
                out += ["/// " + text for text in head + shaped(texts)]
            elif section:
                out += [indent + "///@}"] * grouped + [indent + "/// @name " + section.group(1)]
                out += [indent + "/// " + text for text in shaped(texts[1:])] + [indent + "///@{"]
                grouped = True
            else:
                mark = "/// " if declared and not declared.startswith(("}", "#include", "namespace", "using")) else "// "
                out += [indent + mark + text for text in (shaped(texts) if mark == "/// " else texts)]
            i += len(texts)
        elif behind:
            column, texts = len(behind.group(1)), [behind.group(2)]
            while (m := COMMENT.match(lines[i + 1])) and len(m.group(1)) == column:
                texts.append(m.group(2) or "")
                i += 1
            out += [behind.group(1) + "///< " + " ".join(running(text.strip()) for text in texts)]
            i += 1
        else:
            if grouped and lines[i].startswith("}"):
                out, grouped = out + ["///@}"], False
            out.append(lines[i])
            i += 1
    return out


def main():
    folder = pathlib.Path(sys.argv[1])
    for name in sys.argv[2:]:
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("\n".join(convert(name, pathlib.Path(name).read_text().split("\n"))))


main()

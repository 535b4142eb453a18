#!/usr/bin/env python3
"""Turns a public header into what Doxygen reads, for the reference.

usage: reference_filter.py HEADER

A header's opening comment becomes the page of a group, which belongs to the group of its subject, that of the contents
header it stands in; everything in the header belongs to it.  Blocks ahead of a family become that page's further
paragraphs.  The standard operations, which a macro declares, are written out.
"""
import pathlib
import re
import sys

SOURCES = pathlib.Path(__file__).resolve().parent.parent / "source"
SUBJECTS = ["objects", "text", "containers", "settings", "bytes", "clock", "threads", "platform"]
STANDARD = """/// Adds a reference and returns `obj`.
TYPE *PREFIXRetain( TYPE *obj );
/// Gives a reference up; the last one frees the object.
void PREFIXRelease( TYPE *obj );
/// Casts down; null stays null, an object of another sort aborts.  Adds no reference.
TYPE *PREFIXFrom( ZU_OBJ *obj );
/// Casts up; null stays null.
ZU_OBJ *PREFIXObj( TYPE *obj );
/// Returns the class's sort, not retained.
ZU_SORT *PREFIXSort( void );
/// Returns a new text for the object.
ZU_STRING *PREFIXToString( TYPE *obj );
/// Compares as zuObjCompare does: negative, 0 or positive.
ZU_INT PREFIXCompare( TYPE *objA, TYPE *objB );
/// Tells whether the two are equal in the order of zuObjCompare.
ZU_BOOL PREFIXEquals( TYPE *objA, TYPE *objB );
"""


def escaped(line):
    """Returns a line of prose whose signs Doxygen takes for themselves; what stands in backticks is code."""
    parts = re.split(r"(`[^`]*`)", line)
    for i, part in enumerate(parts):
        if part.startswith("`") and part.endswith("`") and len(part) > 1:
            code = part[1:-1].replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
            code = re.sub(r"([\\@%#\"*_:~|{}-])", lambda sign: f"&#{ord(sign.group(1))};", code)
            parts[i] = f"<tt>{code}</tt>"
        else:
            part = part.replace("\\", "\\\\").replace("&", "\\&").replace("<", "\\<").replace(">", "\\>")
            parts[i] = re.sub(r"([@%#\"])", r"\\\1", part).replace("`", "\\`")
    return "".join(parts)


def page(lines):
    """Returns comment lines as the lines of a page: what is set in by four blanks stands as it is."""
    out = []
    fenced = False
    for line in lines:
        code = line.startswith("    ")
        if code != fenced and (code or line):
            out.append("@verbatim" if code else "@endverbatim")
            fenced = code
        out.append(line.replace("*/", "* /") if fenced else escaped(line))
    if fenced:
        out.append("@endverbatim")
    return out


def comment(lines):
    return ["/**", *lines, "*/"]


def subject_of(header):
    for subject in SUBJECTS:
        if f'#include "{header}"' in (SOURCES / f"zu/zu_{subject}.h").read_text(encoding="utf-8"):
            return subject
    return "objects"


def main():
    path = pathlib.Path(sys.argv[1]).resolve()
    header = str(path.relative_to(SOURCES))
    lines = path.read_text(encoding="utf-8").splitlines()
    opening = []
    while lines and lines[0].startswith("//"):
        opening.append(re.sub(r"^// ?", "", lines.pop(0)))
    title = opening[0].partition(":")[0] if ":" in opening[0] else path.name
    out = []
    if header.count("/") == 1:  # a contents header, or everything
        subject = path.stem.removeprefix("zu_")
        if subject in SUBJECTS:
            out = comment([f"@defgroup {subject} {subject.capitalize()}", *page(opening)])
        print("\n".join(out))
        return
    group = path.name.replace(".", "_")
    if path.suffix == ".hpp":
        parent = "cxx"
        if path.stem == "zu_ref":
            out += comment(["@defgroup cxx The interface in C++", "What zu/zu.hpp has."])
    else:
        parent = subject_of(header)
    # Doxygen knows no scope of the standard library's
    text = re.sub(r"template <>\nstruct std::.*?^};", "", "\n".join(lines), flags=re.S | re.M)
    lines = text.splitlines()
    pending = []
    body = []
    for line in lines:
        if re.match(r"// ?", line) and not line.startswith("///"):
            pending.append(re.sub(r"^// ?", "", line))
            continue
        if pending:
            if not pending[0].startswith("clang-format") and "Retain, Release, From" not in pending[0]:
                opening += ["", *pending]
            pending = []
        standard = re.match(r"ZU_STDFUNCS_DECLARE\( (\w+), (\w+) \)", line)
        if standard:
            body.append(STANDARD.replace("TYPE", standard.group(1)).replace("PREFIX", standard.group(2)))
        elif line.lstrip().startswith("///"):
            ahead, _, text = line.partition("///")
            body.append(ahead + "/// " + (text[1:] if text.startswith("     ") else escaped(text.strip())))
        else:
            body.append(line)
    out += comment([f"@defgroup {group} {title}", f"@ingroup {parent}", f'`#include "{header}"`', "", *page(opening), "@{"])
    out += [*body, "/** @} */"]
    print("\n".join(out))


if __name__ == "__main__":
    main()

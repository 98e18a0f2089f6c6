#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes a copy of the sources in which every operator, constant and branch of the named folders can be broken at run
time, one at a time: rewrite.py TARGET. The places are read from the compiler's own tree, so that types, overloads and
nesting are right. TARGET/mutants.json lists them.
"""

import json
import pathlib
import re
import sys

from clang import cindex
from clang.cindex import CursorKind as K
from clang.cindex import TypeKind as T

from subjects import Rules

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
FIRST_LINE = b'#include "switch.h"\n'
COMPARISONS = {"<": ("less", "<=", ">="), "<=": ("lessEqual", "<", ">"),
               ">": ("greater", ">=", "<="), ">=": ("greaterEqual", ">", "<")}
OPERATORS = {"==": ("equal", "!="), "!=": ("notEqual", "=="), "+": ("plus", "-"), "-": ("minus", "+"), "*": ("times", "+"),
             "/": ("divide", "*"), "%": ("modulo", "*"), "&": ("bitAnd", "|"), "|": ("bitOr", "&"), "^": ("bitXor", "&"),
             "<<": ("shiftLeft", ">>"), ">>": ("shiftRight", "<<")}
ASSIGNMENTS = {"+=": ("plusAssign", "-="), "-=": ("minusAssign", "+="), "*=": ("timesAssign", "/="),
               "/=": ("divideAssign", "*="), "|=": ("orAssign", "&="), "&=": ("andAssign", "|=")}
LOGIC = {"&&": "||", "||": "&&"}

LITERALS = (K.INTEGER_LITERAL, K.FLOATING_LITERAL, K.CHARACTER_LITERAL, K.STRING_LITERAL, K.CXX_BOOL_LITERAL_EXPR)
FUNCTIONS = (K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.FUNCTION_TEMPLATE, K.CONVERSION_FUNCTION)
SCALARS = {T.BOOL, T.CHAR_U, T.UCHAR, T.CHAR_S, T.SCHAR, T.USHORT, T.UINT, T.ULONG, T.ULONGLONG, T.SHORT, T.INT, T.LONG,
           T.LONGLONG, T.FLOAT, T.DOUBLE, T.ENUM}
WRITTEN = re.compile(r"[\d.'\"\w]")  # how a constant begins
MACRO = re.compile(rb"(Q[A-Z]\w*Literal|Q_[A-Z]\w+|[A-Z][A-Z0-9]*_[A-Z0-9_]+)\s*\(")
TRANSPARENT = (K.UNEXPOSED_EXPR, K.PAREN_EXPR)


def is_number(kind):
    canonical = kind.get_canonical()
    return canonical.kind in SCALARS and canonical.kind != T.ENUM


def is_plain(kind):
    """A type whose constants are broken where they are used."""
    canonical = kind.get_canonical()
    if canonical.kind in SCALARS:
        return True
    name = canonical.spelling.removeprefix("const ")
    return name in ("char *", "char *const") or name.startswith("std::basic_string_view<char")


class File:
    """One source file, what is inserted into it and the mutants that stand in it."""

    def __init__(self, path):
        self.path = path
        self.bytes = path.read_bytes()
        self.before, self.after, self.replaced = {}, {}, {}
        self.done = set()

    def is_macro(self, offset):
        """What stands inside of one has no place of its own."""
        return MACRO.match(self.bytes, offset) is not None

    def text(self, start, end):
        return self.bytes[start:end].decode()

    def line(self, offset):
        return self.bytes.count(b"\n", 0, offset) + 1

    def wrap(self, start, end, opening, closing):
        """Called for outer places first: what stands inside goes inside."""
        self.before[start] = self.before.get(start, "") + opening
        self.after[end] = closing + self.after.get(end, "")

    def written(self):
        out, at = [FIRST_LINE], 0
        for place in sorted({*self.before, *self.after, *self.replaced}):
            out.append(self.bytes[at:place])
            at = max(at, place)
            out.append((self.after.get(place, "") + self.before.get(place, "")).encode())
            if place in self.replaced:
                end, text = self.replaced[place]
                out.append(text.encode())
                at = end
        out.append(self.bytes[at:])
        return b"".join(out)


class Rewriter:
    def __init__(self, source, folders, headers):
        self.source = source
        self.folders = folders
        self.headers = headers
        self.files = {}
        self.mutants = []

    def file(self, cursor):
        """The file that a place stands in when it is one of ours."""
        where = cursor.extent.start.file
        if where is None:
            return None
        if where.name not in self.files:
            path = pathlib.Path(where.name).resolve()
            inside = self.source in path.parents and path.relative_to(self.source).parts[0] in self.folders
            inside = inside and (self.headers or path.suffix == ".cpp")
            self.files[where.name] = File(path) if inside else None
        return self.files[where.name]

    def add(self, file, offset, what, change, fixed):
        number = len(self.mutants)
        self.mutants.append({"id": number, "file": str(file.path.relative_to(self.source)), "line": file.line(offset),
                             "column": offset - file.bytes.rfind(b"\n", 0, offset), "kind": what, "change": change,
                             "static": fixed})
        return number

    # The walk. `mode` tells where it is: mode.name is the switch to ask, mode.fixed whether the value is made once.

    def walk(self, cursor, mode):
        file = self.file(cursor)
        kind = cursor.kind
        if kind == K.TRANSLATION_UNIT or kind == K.NAMESPACE or kind == K.LINKAGE_SPEC:
            for child in cursor.get_children():
                if self.file(child) is not None:
                    self.walk(child, mode)
            return
        if file is None:
            return
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        key = (kind, start, end)
        if kind.is_declaration() and key in file.done and kind != K.VAR_DECL:
            return  # a header that was read with another file
        if kind in (K.STATIC_ASSERT, K.ENUM_DECL, K.USING_DECLARATION, K.TYPE_ALIAS_DECL, K.TYPEDEF_DECL, K.TYPE_REF):
            return
        mode = self.mode_inside(cursor, mode, file)
        if mode is None:
            return
        if key not in file.done:
            file.done.add(key)
            if not file.is_macro(start):
                self.place(cursor, file, start, end, mode)
        for child in self.children(cursor):
            self.walk(child, mode)

    def mode_inside(self, cursor, mode, file):
        """The switch for what is inside a declaration; None: nothing there can be broken."""
        if cursor.kind in FUNCTIONS:
            if re.search(r"=\s*default$", file.text(cursor.extent.start.offset, cursor.extent.end.offset)):
                return None
            head = file.text(cursor.extent.start.offset, cursor.location.offset).split()
            return ("MutC" if "constexpr" in head else "MutR", False)
        if cursor.kind in (K.VAR_DECL, K.FIELD_DECL) and cursor.location.offset >= cursor.extent.start.offset:
            words = file.text(cursor.extent.start.offset, cursor.location.offset).split()
            if "constexpr" in words or self.shares_constexpr(cursor, file):
                if is_plain(cursor.type) or "(" in file.text(cursor.location.offset, cursor.extent.end.offset).split("{")[0]:
                    return None  # broken where it is used
                self.loosen(cursor, file)
                return ("MutR", True)
            if "static" in words or cursor.semantic_parent.kind in (K.NAMESPACE, K.TRANSLATION_UNIT):
                return ("MutR", True)
        return mode

    @staticmethod
    def shares_constexpr(cursor, file):
        """The second name of "constexpr int kA = 1, kB = 2;" begins behind the word."""
        line_start = file.bytes.rfind(b";", 0, cursor.location.offset) + 1
        return "constexpr" in file.text(max(line_start, file.bytes.rfind(b"}", 0, cursor.location.offset) + 1),
                                        cursor.location.offset).split()

    @staticmethod
    def loosen(cursor, file):
        """A table is filled when the program starts, so that its entries can be broken."""
        at = file.bytes.find(b"constexpr", cursor.extent.start.offset)
        if at >= 0 and at < cursor.location.offset:
            inside = cursor.semantic_parent.kind in (K.CLASS_DECL, K.STRUCT_DECL)
            file.replaced[at] = (at + len("constexpr"), "inline const" if inside else "const")

    @staticmethod
    def children(cursor):
        found = list(cursor.get_children())
        if cursor.kind == K.CASE_STMT:
            return found[1:]
        if cursor.kind in FUNCTIONS:  # not a pure function's 0
            found = [child for child in found if child.kind not in LITERALS]
        if cursor.kind in (*FUNCTIONS, K.VAR_DECL, K.FIELD_DECL, K.PARM_DECL):  # not the type in front of the name
            return [child for child in found if child.extent.start.offset > cursor.location.offset]
        if cursor.kind in (K.DECL_REF_EXPR, K.MEMBER_REF_EXPR):  # not the arguments of a template behind it
            return [child for child in found if child.extent.start.offset < cursor.location.offset]
        return found

    def place(self, cursor, file, start, end, mode):
        kind = cursor.kind
        if kind in (K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR) or \
                (kind == K.CALL_EXPR and cursor.spelling in ("operator==", "operator<=>")):
            self.binary(cursor, file, start, end, mode)
        elif kind == K.UNARY_OPERATOR:
            self.unary(cursor, file, start, end, mode)
        elif kind in LITERALS:
            # Also of a macro's text, whose kind is not seen where it is named.
            letter = cursor.type.element_type.spelling.removeprefix("const ") if kind == K.STRING_LITERAL else ""
            self.constant(file, start, end, mode, letter)
        elif kind == K.DECL_REF_EXPR:
            self.named(cursor, file, start, end, mode)
        elif kind == K.IF_STMT:
            self.branch(cursor, file, mode)
        elif kind in (K.CONDITIONAL_OPERATOR, K.WHILE_STMT):
            self.turned(next(iter(cursor.get_children())), file, mode, "condition")
        elif kind == K.RETURN_STMT:
            value = next(iter(cursor.get_children()), None)
            if value is not None and value.type.get_canonical().kind == T.BOOL:
                self.turned(value, file, mode, "returned condition")
        if kind in (K.COMPOUND_STMT, K.IF_STMT, K.FOR_STMT, K.CXX_FOR_RANGE_STMT, K.WHILE_STMT, K.CASE_STMT, K.DEFAULT_STMT):
            for child in self.bodies(cursor, file):
                self.statement(child, file, mode)

    @staticmethod
    def bare(cursor):
        """The expression inside brackets and conversions that are not written."""
        while cursor.kind in TRANSPARENT:
            inner = list(cursor.get_children())
            if len(inner) != 1:
                break
            cursor = inner[0]
        return cursor

    def operator(self, cursor, file):
        """(left, operator, its place, right) of an expression of two operands."""
        found = sorted(cursor.get_children(), key=lambda child: (child.extent.start.offset, -child.extent.end.offset))
        if len(found) < 2:
            return None
        left, right = found[0], found[-1]
        begin, end = left.extent.end.offset, right.extent.start.offset
        if begin >= end:
            return None
        text = file.text(begin, end)
        sign = text.strip()
        return left, sign, begin + text.index(sign), right

    def binary(self, cursor, file, start, end, mode):
        found = self.operator(cursor, file)
        if found is None:
            return
        left, sign, at, right = found
        # An operator that the compiler has turned round tells its ends the other way.
        start, end = left.extent.start.offset, right.extent.end.offset
        name, fixed = mode
        sides = (start, end, file, at, sign)
        if sign in LOGIC:
            number = self.add(file, at, "operator", f"{sign} -> {LOGIC[sign]}", fixed)
            ask = f"{name}::turned({number}, "
            file.wrap(start, end, ask, ")")
            file.wrap(left.extent.start.offset, left.extent.end.offset, ask, ")")
            file.wrap(right.extent.start.offset, right.extent.end.offset, ask, ")")
            self.turned(left, file, mode, "condition")
            self.turned(right, file, mode, "condition")
        elif sign in COMPARISONS:
            word, *others = COMPARISONS[sign]
            numbers = [self.add(file, at, "operator", f"{sign} -> {other}", fixed) for other in others]
            self.call(sides, f"{name}::{word}({numbers[0]}, {numbers[1]}, ")
        elif sign in OPERATORS and (sign in ("==", "!=") or (is_number(left.type) and is_number(right.type))):
            word, other = OPERATORS[sign]
            self.call(sides, f"{name}::{word}({self.add(file, at, 'operator', f'{sign} -> {other}', fixed)}, ")
        elif sign in ASSIGNMENTS and is_number(left.type) and is_number(right.type):
            word, other = ASSIGNMENTS[sign]
            self.call(sides, f"{name}::{word}({self.add(file, at, 'operator', f'{sign} -> {other}', fixed)}, ")

    @staticmethod
    def call(sides, opening):
        start, end, file, at, sign = sides
        file.wrap(start, end, opening, ")")
        file.replaced[at] = (at + len(sign), ",")

    def unary(self, cursor, file, start, end, mode):
        name, fixed = mode
        sign = file.text(start, start + 2)
        if sign in ("++", "--"):
            number = self.add(file, start, "operator", "++ -> --" if sign == "++" else "-- -> ++", fixed)
            file.wrap(start, end, f"{name}::{'up' if sign == '++' else 'down'}({number}, ", ")")
            file.replaced[start] = (start + 2, "")
        elif sign[0] == "!" and sign != "!=":
            number = self.add(file, start, "operator", "! taken away", fixed)
            file.wrap(start, end, f"{name}::turned({number}, ", ")")

    def constant(self, file, start, end, mode, letter=""):
        name, fixed = mode
        text = file.text(start, end)
        if not WRITTEN.match(text):
            return  # made by the compiler
        if file.bytes[end:end + 1] == b">":
            return  # a template's argument: around comparisons there are blanks
        number = self.add(file, start, "constant", f"{text[:40]} -> another", fixed)
        file.wrap(start, end, f"{name}::constant{f'<const {letter}*>' if letter else ''}({number}, ", ")")

    def named(self, cursor, file, start, end, mode):
        meant = cursor.referenced
        if meant is None:
            return
        if meant.kind == K.ENUM_CONSTANT_DECL:
            pass
        elif meant.kind == K.VAR_DECL and is_plain(meant.type) and meant.type.is_const_qualified():
            tokens = [token.spelling for token in meant.get_tokens()]
            if "constexpr" not in tokens and not meant.spelling.startswith(("k", "mk")):
                return
        else:
            return
        self.constant(file, start, end, mode)

    def turned(self, cursor, file, mode, what):
        """A condition the other way round, where no operator in it says the same already."""
        inner = self.bare(cursor)
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if not inner.kind.is_expression() or inner.kind in (K.UNARY_OPERATOR, *LITERALS) or ("turned", start, end) in file.done:
            return
        if inner.kind == K.BINARY_OPERATOR or (inner.kind == K.CALL_EXPR and inner.spelling.startswith("operator")
                                               and inner.spelling[8:] in (*COMPARISONS, *OPERATORS)):
            found = self.operator(inner, file)
            if found and (found[1] in COMPARISONS or found[1] in LOGIC or found[1] in ("==", "!=")):
                return
        file.done.add(("turned", start, end))
        number = self.add(file, start, "branch", f"{what} turned round", mode[1])
        # In brackets, because "a, b" is one value.
        file.wrap(start, end, f"{mode[0]}::turned({number}, (", "))")

    def branch(self, cursor, file, mode):
        close = self.closing_bracket(file, file.bytes.index(b"(", cursor.extent.start.offset))
        head = [child for child in cursor.get_children() if child.extent.start.offset < close]
        declared = [child for child in head if child.kind == K.VAR_DECL]
        if head and head[-1].kind.is_expression() and not any(
                child.extent.start.offset <= head[-1].extent.start.offset < child.extent.end.offset for child in declared):
            self.turned(head[-1], file, mode, "condition")
            return
        body = next((child for child in cursor.get_children() if child.extent.start.offset > close), None)
        if body is not None and not self.is_deletable(body, file):
            number = self.add(file, body.extent.start.offset, "branch", "body left out", mode[1])
            end = body.extent.end.offset
            if body.kind != K.COMPOUND_STMT:
                end = file.bytes.index(b";", end) + 1
            file.wrap(body.extent.start.offset, end, f"{{ if (!{mode[0]}::on({number})) ", " }")

    @staticmethod
    def closing_bracket(file, at):
        depth = 0
        while True:
            byte = file.bytes[at:at + 1]
            depth += (byte == b"(") - (byte == b")")
            if depth == 0:
                return at
            at += 1

    def bodies(self, cursor, file):
        """The statements that stand directly in this one."""
        found = list(cursor.get_children())
        if cursor.kind == K.COMPOUND_STMT or cursor.kind == K.DEFAULT_STMT:
            return found
        if cursor.kind == K.CASE_STMT:
            return found[1:]
        close = self.closing_bracket(file, file.bytes.index(b"(", cursor.extent.start.offset))
        return [child for child in found if child.extent.start.offset > close]

    def is_deletable(self, cursor, file):
        inner = self.bare(cursor)
        if inner.kind == K.BINARY_OPERATOR:
            found = self.operator(inner, file)
            return found is not None and found[1] == "="
        return inner.kind in (K.CALL_EXPR, K.COMPOUND_ASSIGNMENT_OPERATOR, K.UNARY_OPERATOR)

    def statement(self, cursor, file, mode):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if not self.is_deletable(cursor, file) or ("statement", start, end) in file.done:
            return
        file.done.add(("statement", start, end))
        number = self.add(file, start, "branch", "statement left out", mode[1])
        file.wrap(start, file.bytes.index(b";", end) + 1, f"{{ if (!{mode[0]}::on({number})) ", " }")


def rewrite(target, subject):
    """Breaks a subject's sources in a copy of everything that its tests are built from; the places."""
    copy_tree(PROJECT, target, subject.copied, subject.folders, subject.left_out)
    source = target / "plain" / "src"  # what is read must not change meanwhile
    copy_tree(PROJECT, target / "plain", ("src",), (), subject.left_out)
    rewriter = Rewriter(source, subject.folders, subject.headers)
    index = cindex.Index.create()
    for folder in subject.folders:
        for path in sorted((source / folder).rglob("*.cpp")):
            unit = index.parse(str(path), args=["-std=c++20", "-xc++", f"-I{source}", *subject.parser_flags()])
            errors = [str(d) for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
            if errors:
                raise SystemExit(f"rewrite.py: {path.name}: {errors[0]}")
            rewriter.walk(unit.cursor, ("MutR", False))
    for file in rewriter.files.values():
        if file is not None:
            write_if_changed(target / "src" / file.path.relative_to(source), file.written())
    write_if_changed(target / "src" / "switch.h", (HERE / "switch.h").read_bytes())
    (target / "mutants.json").write_text(json.dumps(rewriter.mutants, indent=0))
    return rewriter.mutants


def write_if_changed(path, data):
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_bytes() != data:
        path.write_bytes(data)


def copy_tree(source, target, names, folders, left_out):
    """Files that are the same stay, so that little is built again."""
    kept = set()
    for name in names:
        for path in [source / name, *sorted((source / name).rglob("*"))]:
            inner = path.relative_to(source)
            if path.is_file() and "__pycache__" not in inner.parts and inner.parts[:2] not in left_out:
                kept.add(target / inner)
                if not is_rewritten(target, inner, folders):
                    write_if_changed(target / inner, path.read_bytes())
        for path in [*(target / name).rglob("*")]:
            if path.is_file() and path not in kept:
                path.unlink()


def is_rewritten(target, inner, folders):
    return inner.parts[0] == "src" and inner.parts[1] in folders and (target / inner).exists() and \
        (target / inner).read_bytes().startswith(FIRST_LINE)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    print(len(rewrite(pathlib.Path(sys.argv[1]).resolve(), Rules())), "mutants")

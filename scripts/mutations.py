# SPDX-FileCopyrightText: 2026 The Quillet authors
# SPDX-License-Identifier: MIT
"""Finds the single mistakes that can be planted into C++ source: every place where a mutation operator applies."""
import dataclasses
import re


@dataclasses.dataclass(frozen=True)
class Mutation:
    """Replaces source[begin:end] of a file."""
    file: str
    begin: int
    end: int
    replacement: str
    operator: str

    def planted(self, source):
        return source[:self.begin] + self.replacement + source[self.end:]

    def line(self, source):
        return source.count("\n", 0, self.begin) + 1


LITERAL = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<tag>[^(]*)\(.*?\)(?P=tag)"|"(?:\\.|[^"\\\n])*"'
    r"|(?<![\w])u?'(?:\\.|[^'\\\n])+'|^[ \t]*#(?:\\\n|[^\n])*", re.DOTALL | re.MULTILINE)


# A mistake in an assertion has no effect that a test could see.
ASSERTION = re.compile(r"\b(?:Q_ASSERT|Q_ASSERT_X|static_assert) ?\(")
# Equal to {}, the replacement of a returned value.
DEFAULTS = {"false", "0", "0.0", "nullptr", "std::nullopt", "QString()"}


def code(source):
    """The source with comments, string and character literals, assertions and preprocessor lines blanked out, at the
    same length."""
    text = LITERAL.sub(lambda match: re.sub(r"[^\n]", "\1" if match[0][0] in "\"R'u" else " ", match[0]), source)
    for match in ASSERTION.finditer(text):
        end = closing(text, match.end() - 1) + 1
        text = text[:match.start()] + re.sub(r"[^\n]", " ", text[match.start():end]) + text[end:]
    return text


def closing(text, at):
    """The position of the bracket that closes the one at `at`; None if there is none."""
    depth = 0
    for index in range(at, len(text)):
        if text[index] in "([{":
            depth += 1
        elif text[index] in ")]}":
            depth -= 1
            if depth == 0:
                return index
    return None


def pieces(text, begin, end):
    """The parts of text[begin:end] between its outermost commas, as pairs of positions, without surrounding blanks."""
    found, depth, start = [], 0, begin
    for index in range(begin, end + 1):
        if index == end or (text[index] == "," and depth == 0):
            piece = text[start:index]
            found.append((start + len(piece) - len(piece.lstrip()), start + len(piece.rstrip())))
            start = index + 1
        elif text[index] in "([{":
            depth += 1
        elif text[index] in ")]}":
            depth -= 1
    return found


def replaced_operators(text):
    for pattern, changes, name in (
            (r" (<=|>=|<|>) ", {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}, "bound of a comparison"),
            (r"(?<!operator)(==|!=)(?=[ ])", {"==": "!=", "!=": "=="}, "negated comparison"),
            (r" (&&|\|\|) ", {"&&": "||", "||": "&&"}, "and for or")):
        for match in re.finditer(pattern, text):
            yield match.start(1), match.end(1), changes[match[1]], name


def negated_conditions(text):
    for match in re.finditer(r"\b(?:if|while) \(", text):
        end = closing(text, match.end() - 1)
        begin = max(match.end(), text.rfind(";", match.end(), end) + 1)
        # A condition that declares a name cannot be negated.
        if end and not re.search(r"(?<![=!<>])=(?!=)", text[begin:end]):
            yield begin, begin, "!(", "negated condition", end


def dropped_statements(text):
    for match in re.finditer(r"(?<=[;{}])\s*\n\s*((?:Q_EMIT |co_await |\+\+|--)?[a-z_][\w.:]*(?:->[\w.:]+)*)", text):
        end = text.find(";", match.end())
        statement = text[match.start(1):end]
        word = re.match(r"\W*(\w+)", statement)[1]
        if end < 0 or word in (
                "return", "co_return", "if", "for", "while", "switch", "using", "case", "default", "else", "struct",
                "class", "enum", "namespace", "constexpr", "const", "static", "auto", "template", "public", "private",
                "protected", "friend", "explicit", "virtual", "break", "continue"):
            continue
        balanced = all(statement.count(a) == statement.count(b) for a, b in ("()", "{}", "[]"))
        if not balanced:
            # A lambda in an argument: up to the call's closing bracket.
            opening = text.find("(", match.end(1) - 1)
            close = closing(text, opening) if opening >= 0 else None
            if close is None or text[close + 1:close + 2] != ";":
                continue
            end = close + 1
        rest = text[match.end(1):end].lstrip()
        if rest.startswith(("(", "=", "+=", "-=", "[", ".", "->")) or rest == "":
            yield match.start(1), end, "", "skipped reset" if re.match(r"m_\w+( = |\.reset|\.clear)", statement) \
                else "dropped statement"


PARAMETER = re.compile(r"(?P<type>(?:const )?[\w:<>, ]+ [&*]*)\w+(?: = .*)?", re.DOTALL)


def cannot_swap(text, begin, parts, end):
    """Whether a swap has no effect, because the order does not matter or these are parameters of a function declared
    without a body, or never compiles."""
    if re.search(r"\b(?:(?:dis)?connect|std::(?:min|max))$", text[:begin]):
        return True
    parameters = [PARAMETER.fullmatch(text[first:last]) for first, last in parts if last > first]
    if not all(parameters) or any(re.match(r"(?:new|co_await) ", each[0]) for each in parameters):
        return False
    types = {each["type"] for each in parameters}
    return bool(re.match(r"\)[\w\s]*(?:= 0)?;", text[end:])) or len(types) == len(parameters)


def value(text, begin, end):
    """The start of the value in `.member = value`; of anything else, `begin`."""
    named = re.match(r"\.\w+ = ", text[begin:end])
    return begin + (named.end() if named else 0)


def swapped_pairs(text):
    for match in re.finditer(r"(?<=[\w>\]])[({]|(?<=return )\{", text):
        end = closing(text, match.start())
        if (not end or text[match.start():end].count(";")
                or re.search(r"\b(?:if|for|while|switch)$", text[:match.start()])):
            continue
        parts = pieces(text, match.end(), end)
        if cannot_swap(text, match.start(), parts, end):
            continue
        for (first, first_end), (second, second_end) in zip(parts, parts[1:]):
            first, second = value(text, first, first_end), value(text, second, second_end)
            if text[first:first_end] != text[second:second_end] and first_end > first and second_end > second:
                yield first, second_end, (first, first_end, second, second_end), "swapped pair"


def changed_numbers(text):
    for match in re.finditer(r"(?<![\w.'])\d[\d']*(?:\.\d+)?(?![\w.'])", text):
        if re.search(r"\)[\w\s]* = $", text[:match.start()]):
            continue  # a pure virtual function
        digits = match[0].replace("'", "")
        one_more = f"{float(digits) + 1:g}" if "." in digits else str(int(digits) + 1)
        yield (match.start(), match.end(), one_more + (".0" if "." in digits and "." not in one_more else ""),
               "off by one")


def empty_texts(source, text):
    for match in re.finditer('\1+', text):
        if source[match.start()] == '"' and match.end() - match.start() > 2:
            yield match.start() + 1, match.end() - 1, "", "empty text"


def returned_defaults(text):
    for match in re.finditer(r"\b(?:co_)?return ([^;{}]+);", text):
        if match[1] not in DEFAULTS:
            yield match.start(1), match.end(1), "{}", "returned default"


def mutations(file, source):
    """All mutations of `source`, ordered by position."""
    text = code(source)
    found = []
    for begin, end, replacement, name in (*replaced_operators(text), *dropped_statements(text), *changed_numbers(text),
                                          *empty_texts(source, text), *returned_defaults(text)):
        found.append(Mutation(file, begin, end, replacement, name))
    for begin, _, opening, name, end in negated_conditions(text):
        found.append(Mutation(file, begin, end, opening + source[begin:end].lstrip() + ")", name))
    for begin, end, (first, first_end, second, second_end), name in swapped_pairs(text):
        swapped = source[second:second_end] + source[first_end:second] + source[first:first_end]
        found.append(Mutation(file, begin, end, swapped, name))
    return sorted(found, key=lambda mutation: (mutation.begin, mutation.end, mutation.operator))

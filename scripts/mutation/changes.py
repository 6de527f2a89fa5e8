"""The kinds of change: each takes a Source and gives its changes, one place each. They are the slips that reviews
find: a wrong operator or constant, a statement forgotten, a variable taken for its twin, an index beside the right
one, an early exit or an error ignored, 16 bits where there are more to count."""
import collections
import re

Change = collections.namedtuple("Change", "source kind place old new")

SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&", "+": "-", "-": "+",
         "*": "/", "/": "*", "+=": "-=", "-=": "+=", "true": "false", "false": "true"}
# Binary operators stand between blanks; the brackets of templates do not.
OPERATOR = re.compile(r"(?<= )(<=|>=|==|!=|&&|\|\||\+=|-=|[<>+*/-])(?=\s)|\b(?:true|false)\b")
NUMBER = re.compile(r"(?<![\w.])(\d+(?:\.\d+)?)(?![\w.])")
LITERAL = re.compile(r'L?"((?:\\.|[^"\\\n])+)"')
IDENTIFIER = re.compile(r"[A-Za-z_]\w*")
DECLARATION = re.compile(
    r"(?:(?:const|constexpr|static|thread_local|inline|mutable)\s+)*"
    r"(?P<type>(?:auto|unsigned|[A-Za-z_][\w:]*)(?:<[^;={}()]*>)?)\s*(?:const\s*)?[&*]*\s+[&*]*(?:const\s+)?(?P<name>[A-Za-z_]\w*)"
    r"\s*(?P<after>=(?!=)|\{|\(|;|,|\)|\[|:(?!:)|$)")
NO_TYPES = {"return", "else", "case", "goto", "delete", "new", "throw", "using", "namespace", "struct", "class", "enum",
            "typename", "template", "operator", "if", "for", "while", "switch", "do", "break", "continue"}
COUNTS = r"std::(?:size_t|uint32_t|int32_t|ptrdiff_t)"
PAIRS = ("x y", "first last", "low high", "begin end", "left right", "min max", "start end", "lower upper", "before after",
         "least greatest", "lowest highest", "least most", "head tail", "near far", "narrow wide", "here next", "i j", "j k",
         "i k", "a b", "old new", "row column", "front back", "top bottom", "Left Right", "First Last")


def twin_words():
    twins = collections.defaultdict(list)
    for pair in PAIRS:
        a, b = pair.split()
        twins[a].append(b)
        twins[b].append(a)
    return twins


TWINS = twin_words()


def operators(source):
    """A comparison, a sign, a logical operator, a truth value."""
    for m in OPERATOR.finditer(source.code):
        if not is_constant_expression(source, m.start()):
            yield Change(source, "operator", m.start(), m.group(), SWAPS[m.group()])


def constants(source):
    """A number one larger, and 1 for 0."""
    for m in NUMBER.finditer(source.code):
        if is_constant_expression(source, m.start()): continue
        yield Change(source, "constant", m.start(), m.group(), "1" if float(m.group()) == 0 else m.group() + " + 1")


def texts(source):
    for m in LITERAL.finditer(source.text):
        if source.line_text(source.line_of(m.start())[0]).lstrip().startswith(("#", "//")): continue
        yield Change(source, "text", m.start(1), m.group(1), "~" + m.group(1))


def is_constant_expression(source, place):
    line = source.line_text(source.line_of(place)[0]).lstrip()
    return line.startswith(("namespace", "template", "static_assert", "LOG4CXX"))


def statements(source):
    """A statement that does something, left out. To reserve memory changes no result."""
    for function in source.functions:
        for begin, end, _, _ in source.statements(function):
            text = source.code[begin:end]
            if text.rstrip() == ";" or IDENTIFIER.match(text) and first_word(text) in NO_TYPES: continue
            if is_declaration(text) or re.search(r"\breserve\(", text): continue
            yield Change(source, "statement left out", begin, source.text[begin:end], ";")


def exits(source):
    """An early return, break or continue, or the refusal of an error, left out. The last return of a function is not
    early, and behind a case one would fall out of the function."""
    for function in source.functions:
        for begin, end, depth, guarded in source.statements(function):
            text = source.code[begin:end]
            word = first_word(text)
            if word not in ("return", "break", "continue", "throw") or not (guarded or depth > 0): continue
            if re.search(r"(?:case\b[^;{}]*|default\s*):\s*$", source.code[:begin]): continue
            if word == "return" and ends_function(source, end, function): continue
            refuses = word == "throw" or re.match(r"return\s+(?:false|-1|nullptr|std::nullopt|\{\})\s*;", text)
            yield Change(source, "error ignored" if refuses else "early exit left out", begin, source.text[begin:end], ";")


def ends_function(source, place, function):
    return not re.search(r"[^\s};]", source.code[place:function.end])


def first_word(text):
    m = IDENTIFIER.match(text)
    return m.group() if m else ""


def is_declaration(text, after=""):
    m = DECLARATION.match(text)
    return bool(m) and m.group("type") not in NO_TYPES and m.group("after").startswith(after)


def variables(source, function):
    """The variables that a function declares, by their type, with the place of each."""
    found = collections.defaultdict(dict)
    code = source.code[function.begin:function.end]
    for m in re.finditer(r"(?<![\w.>:])" + DECLARATION.pattern, code):
        is_function = m.group("after") == "(" and function.begin + m.start() < function.body
        if m.group("type") in NO_TYPES or m.group("type") == "auto" or is_function: continue
        found[m.group("type")].setdefault(m.group("name"), function.begin + m.start("name"))
    return found


def twins(source):
    """A variable taken for another of its type in the same function, or for the one at the other end."""
    for function in source.functions:
        by_type = variables(source, function)
        declared = {place for names in by_type.values() for place in names.values()}
        names = set(IDENTIFIER.findall(source.code[function.begin:function.end]))
        for m in IDENTIFIER.finditer(source.code, function.begin, function.end):
            if m.start() in declared: continue
            for other in sorted({neighbour(m.group(), by_type), *opposites(m.group(), names)} - {None}):
                yield Change(source, "twin variable", m.start(), m.group(), other)


def neighbour(name, by_type):
    """The variable of the same type that was declared next."""
    for names in by_type.values():
        order = sorted(names, key=names.get)
        if name in order and len(order) > 1: return order[(order.index(name) + 1) % len(order)]
    return None


def opposites(name, names):
    """Names in use that differ from this one in a word that has an opposite: left, leftX, firstIdx_."""
    words = re.findall(r"[A-Z]?[a-z0-9]+|[A-Z]+(?![a-z])|_", name)
    for k, word in enumerate(words):
        for other in TWINS.get(word, []) + [o.capitalize() for o in TWINS.get(word.lower(), []) if word[0].isupper()]:
            changed = "".join(words[:k] + [other] + words[k + 1:])
            if changed in names: yield changed


def indexes(source):
    """An index one too high and one too low."""
    for m in re.finditer(r"(?<=[\w)\]])\[", source.code):
        end = source.closing(m.start())
        before = source.code[source.code.rfind("\n", 0, m.start()) + 1:end]
        array = is_declaration(before.lstrip(), "[") or re.search(r"\bnew [\w:]+$", source.code[:m.start()])
        if array or not source.text[m.end():end].strip(): continue
        for step in (" + 1", " - 1"): yield Change(source, "index", end, "]", step + "]")


def narrow(source):
    """16 bits for 32 or 64: in a cast, in a local variable, in a loop, in a vector."""
    for m in re.finditer(r"static_cast<" + COUNTS + r">\(", source.code):
        end = source.closing(m.end() - 1)
        if re.match(r"std::(?:countr_zero|countl_zero|popcount)\(", source.code[m.end():end]): continue
        yield Change(source, "16 bits", m.end(), source.text[m.end():end], f"static_cast<std::uint16_t>({source.text[m.end():end]})")
    for m in re.finditer(r"(?:(?<=\()|(?<=vector<)|(?<=const ))" + COUNTS + r"(?=(?: \w+ =)|>)", source.code):
        in_loop = source.code[:m.start()].endswith("for (")
        # A loop of some fixed rounds never counts so far.
        if in_loop and re.match(r"[^;]*;[^;]*[<>=] (?:k[A-Z]\w*|\d+);", source.code[m.end():]): continue
        if in_loop or source.code[m.end()] == ">":
            yield Change(source, "16 bits", m.start(), m.group(), "std::uint16_t")
            continue
        begin = source.code.index("=", m.end()) + 2
        end = source.end_of_statement(begin, len(source.code)) - 1
        yield Change(source, "16 bits", begin, source.text[begin:end], f"static_cast<std::uint16_t>({source.text[begin:end]})")


KINDS = (operators, constants, statements, exits, twins, indexes, narrow)

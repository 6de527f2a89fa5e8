"""A C++ source as the changes see it: its text without comments and literals, its functions, their statements."""
import bisect
import re

BLANKED = re.compile(r'//[^\n]*|/\*.*?\*/|L?"(?:\\.|[^"\\\n])*"|L?\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#(?:\\\n|[^\n])*', re.S | re.M)
SCOPE = re.compile(r"\b(?:namespace|struct|class|union|enum)\b[^;(){}]*$")
WORD = re.compile(r"[A-Za-z_]\w*")
OPEN, CLOSE = "([{", ")]}"


def blanks(match):
    return re.sub(r"[^\n]", " ", match.group())


class Function:
    """The places of a function: where its signature and its body begin, and where it ends, behind the brace."""

    def __init__(self, begin, body, end):
        self.begin, self.body, self.end = begin, body, end


class Source:
    def __init__(self, path, text):
        self.path = path
        self.text = text
        self.code = BLANKED.sub(blanks, text)  # the same places, nothing but code
        self.line_starts = [0] + [m.end() for m in re.finditer("\n", text)]
        self.functions = list(self._functions())

    def line_of(self, place):
        """Line and column, from 1."""
        line = bisect.bisect_right(self.line_starts, place)
        return line, place - self.line_starts[line - 1] + 1

    def line_text(self, line):
        return self.text.split("\n")[line - 1]

    def closing(self, place):
        """The place of the bracket that closes the one at `place`."""
        depth = 0
        for k in range(place, len(self.code)):
            depth += (self.code[k] in OPEN) - (self.code[k] in CLOSE)
            if depth == 0: return k
        return len(self.code) - 1

    def _functions(self):
        """Every function that has a body, and no class or namespace around it; those inside a class one by one."""
        place = begin = 0
        while place < len(self.code):
            character = self.code[place]
            if character == "(":
                place = self.closing(place)
            elif character == "{":
                head = self.code[begin:place]
                if not SCOPE.search(head):
                    end = self.closing(place) + 1
                    if ")" in head and not re.search(r"=\s*$", head): yield Function(begin, place, end)
                    place = end - 1
                begin = place + 1
            elif character in ";}":
                begin = place + 1
            place += 1

    def statements(self, function):
        """(begin, end, depth, guarded) of each statement that ends with a semicolon, behind the heads of if and for."""
        place, end, depth = function.body + 1, function.end - 1, 0
        guarded = False
        while place < end:
            character = self.code[place]
            if character.isspace() or character == ";":
                place += 1
            elif character == "{":
                place, depth, guarded = place + 1, depth + 1, False
            elif character == "}":
                place, depth, guarded = place + 1, depth - 1, False
            elif (head := re.compile(r"(if|for|while|switch)\b[^(]*\(").match(self.code, place)):
                place, guarded = self.closing(head.end() - 1) + 1, True
            elif (word := re.compile(r"(else|do)\b|(case\b[^:;]*|default)\s*:(?!:)").match(self.code, place)):
                place, guarded = word.end(), True
            else:
                stop = self.end_of_statement(place, end)
                yield place, stop, depth, guarded
                place, guarded = stop, False

    def end_of_statement(self, place, end):
        while place < end and self.code[place] != ";":
            place = self.closing(place) if self.code[place] in OPEN else place
            place += 1
        return min(place + 1, end)

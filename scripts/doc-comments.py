#!/usr/bin/env python3
"""Gives Doxygen the comments of a header in the form that it reads (its INPUT_FILTER).

  scripts/doc-comments.py HEADER

The headers have plain // comments. This writes the header with the same lines, in which

  - the comment at the top documents the file, and its classes without a comment of their own;
  - a comment above a declaration documents it and the ones that follow without an empty line;
  - a comment behind a declaration, on its line, documents that;
  - under a heading ("// --- title ---") what has no comment is documented by the title;
  - comments inside functions, and those with an empty line behind them, stay as they are.

Lines that are indented by three blanks or more are examples, unless they begin a list.
"""

import re
import sys

HEADING = re.compile(r'//\s*---\s*(.*?)\s*-*$')
LIST = re.compile(r'\s*(-|\d+\.)\s')
MACRO_LINE = re.compile(r'[A-Z][A-Z0-9_]+(\([^()]*\))?$')
CLASS = re.compile(r'(class|struct)\s+(TLVN_API\s+)?(\w+)[^;]*$')
FORWARD = re.compile(r'(class|struct|friend)\b[^{(]*;')
SCOPE = re.compile(r'\b(namespace|class|struct|union|enum|extern\s*"C")\b')

# Members whose meaning is that of the language.
SPECIAL = [(re.compile(pattern), meaning) for pattern, meaning in (
    (r'=\s*delete;', 'Not to be copied.'),
    (r'~\w+\(\)', 'Ends it, with what it owns.'),
    (r'\b(\w+)\(const \1& \w+\)', 'A copy.'),
    (r'\b(\w+)\(\1&& \w+\)', 'Takes over what the other one has, which is empty then.'),
    (r'\b(\w+)& operator=\(const \1& \w+\)', 'Becomes a copy.'),
    (r'\b(\w+)& operator=\(\1&& \w+\)',
     'Takes over what the other one has, which is empty then.'),
    (r'\boperator(==|!=|<|<=|>|>=)\(', 'Compares the two.'),
)]


def escape(text):
    """Keeps Doxygen from reading commands, links and tags, but for what is between backticks."""
    parts = re.split(r'(`[^`]*`)', text)
    for i in range(0, len(parts), 2):
        parts[i] = re.sub(r'([\\@<>&#%$])', r'\\\1', parts[i]).replace('*/', '*\\/')
    return ''.join(parts)


def body(comment):
    """The text of a // line, without the blank behind the slashes."""
    text = comment.strip()[2:]
    return text[1:] if text.startswith(' ') else text


def to_markdown(lines):
    """Texts of comment lines, with examples as Markdown has them: indented by four or more."""
    out = []
    example = False
    before_empty = True
    for line in lines:
        if not line.strip():
            before_empty = True
            example = False
            out.append('')
            continue
        indent = len(line) - len(line.lstrip())
        if before_empty:
            example = indent >= 2 and not LIST.match(line)
        before_empty = False
        out.append('    ' + line.replace('*/', '* /') if example else escape(line))
    return out


def in_one_line(lines):
    """The same on one line, without the examples."""
    return ' '.join(line.strip() for line in to_markdown(lines)
                    if line.strip() and not line.startswith('    '))


def block(lines, indent, end=''):
    """A documentation comment of as many lines."""
    texts = to_markdown(lines)
    out = [indent + ('/** ' if i == 0 else ' * ') + text for i, text in enumerate(texts)]
    out[-1] += end + ' */'
    return out


def split_code(line):
    """The code of a line and the // comment behind it (None), strings being looked at."""
    i = 0
    quote = None
    while i < len(line):
        c = line[i]
        if quote:
            if c == '\\':
                i += 1
            elif c == quote:
                quote = None
        elif c in '"\'' and not (c == "'" and i > 0 and line[i - 1].isalnum()):
            quote = c
        elif line.startswith('//', i):
            return line[:i], line[i:]
        i += 1
    return line, None


class Filter:
    def __init__(self, lines):
        self.lines = lines
        self.out = []
        self.tail = []          # documentation that stands behind everything else
        self.scopes = [True]    # of the open braces: whether declarations stand in them
        self.enums = [False]
        self.statement = ''     # what has been read of the declaration that is not at its end
        self.parens = 0
        self.group = None       # text lines of the comment that the next declaration gets
        self.fresh = False      # that comment has been written out for the next declaration
        self.heading = ''
        self.brief = ''
        self.described = None
        self.leader = ''
        self.trailing_column = -1

    def run(self):
        i = self.file_comment()
        while i < len(self.lines):
            line = self.lines[i]
            stripped = line.strip()
            if stripped.startswith('//') and self.scopes[-1] and not self.statement:
                i = self.comment(i)
                continue
            if not stripped:
                self.group = None
                self.out.append(line)
            elif stripped.startswith('#'):
                i = self.preprocessor(i)
                continue
            else:
                self.code(line)
            i += 1
        return self.out + self.tail

    # The comment at the top of the file, up to its empty line.
    def file_comment(self):
        end = 0
        while end < len(self.lines) and self.lines[end].startswith('//'):
            end += 1
        if end == 0:
            return 0
        texts = [body(line) for line in self.lines[:end]]
        self.brief = in_one_line(texts).split('. ')[0].rstrip('.:') + '.'
        name = self.described = self.first_bare_class()
        self.out += block(texts, '')
        self.out[0] = self.out[0].replace('/** ', '/** @class %s ' % name if name else '/** @file ',
                                          1)
        if name:
            # A block that begins with a command still has its first sentence as the brief one.
            self.out[0] = self.out[0].replace('@class %s ' % name, '@class %s\\n' % name, 1)
            self.tail.append('/** @file\n * %s */' % self.brief)
        else:
            self.out[0] = self.out[0].replace('@file ', '@file\\n', 1)
        self.out[0] = self.out[0].replace('\\n', '\n * ', 1)
        self.lines[end] = ''
        return end

    # The first class without a comment directly above it, if it is the first of all.
    def first_bare_class(self):
        for i, line in enumerate(self.lines):
            match = re.match(r'(class|struct)\s+(?:TLVN_API\s+)?(\w+)\b[^;]*$', line)
            if match:
                return None if self.lines[i - 1].startswith('//') else match.group(2)
        return None

    def comment(self, i):
        if self.lines[i].index('//') == self.trailing_column:
            self.out.append(self.lines[i].replace('//', '///<', 1))
            return i + 1
        heading = HEADING.match(self.lines[i].strip())
        if heading and '---' in self.lines[i]:
            self.heading = heading.group(1)
            self.group = None
            self.out.append(self.lines[i])
            return i + 1
        end = i
        while (end < len(self.lines) and self.lines[end].strip().startswith('//') and
               not HEADING.match(self.lines[end].strip())):
            end += 1
        if end == i:
            end = i + 1
        texts = [body(line) for line in self.lines[i:end]]
        following = self.lines[end].strip() if end < len(self.lines) else ''
        if not following or following.startswith('}') or following.startswith('//'):
            self.out += self.lines[i:end]
            self.group = None
            return end
        indent = self.lines[i][:len(self.lines[i]) - len(self.lines[i].lstrip())]
        self.group = texts
        self.fresh = True
        if following.startswith('#'):
            self.out += self.lines[i:end]
        else:
            self.out += block(texts, indent)
        return end

    def preprocessor(self, i):
        match = re.match(r'#define\s+(\w+)', self.lines[i])
        if match and self.scopes[-1]:
            text = in_one_line(self.group) if self.group else escape(self.heading) or self.brief
            self.tail.append('/** @def %s\n * %s */' % (match.group(1), text))
        while True:
            line = self.lines[i]
            self.out.append(line)
            i += 1
            if not line.endswith('\\') or i == len(self.lines):
                return i

    def code(self, line):
        code, comment = split_code(line)
        text = code.strip()
        begins = self.scopes[-1] and not self.statement
        label = re.match(r'(public|protected|private)\s*:', text)
        declares = (begins and not label and text and not text.startswith('}') and
                    not text.startswith('{') and not FORWARD.match(text) and
                    not MACRO_LINE.match(text) and
                    not re.match(r'(namespace|static_assert)\b', text))
        trailing = (comment is not None and text and self.scopes[-1] and
                    not text.startswith('}') and not text.endswith('{') and not label)
        prefix = ''
        if declares and self.fresh:
            name = re.search(r'(operator\W+|~?\w+)\s*\(|(\w+)\s*(;|=|\{|$)', text)
            self.leader = (name.group(1) or name.group(2)).strip() if name else 'the one above'
        if declares and not trailing:
            prefix = self.documentation(text)
        if begins and text:
            self.fresh = False
        if label:
            self.group = None
        self.trailing_column = -1
        if trailing:
            self.trailing_column = len(code)
            line = code + '///<' + escape(comment[2:])
        indent = len(line) - len(line.lstrip())
        self.out.append(line[:indent] + prefix + line[indent:])
        if MACRO_LINE.match(text) and begins:
            return
        if not label:
            self.follow(text)

    # What goes in front of a declaration that has no comment directly above it.
    def documentation(self, text):
        if self.fresh:
            return ''
        match = CLASS.match(text)
        if match:
            return '' if match.group(3) == self.described else '/** %s */ ' % self.brief
        for pattern, meaning in SPECIAL:
            if pattern.search(text):
                return '/** %s */ ' % meaning
        if self.group:
            return '/** With %s: %s */ ' % (self.leader, in_one_line(self.group))
        heading = self.heading[:1].upper() + self.heading[1:]
        return '/** %s. */ ' % escape(heading) if heading else ''

    # Keeps track of scopes and of where declarations end.
    def follow(self, text):
        text = re.sub(r'"(\\.|[^"\\])*"|\'(\\.|[^\'\\])\'', '""', text)
        for c in text:
            if c == '{' and self.parens == 0:
                # A body or an initialiser is no scope of declarations.
                head = re.sub(r'template\s*<[^>]*>', '', self.statement).split('(')[0]
                declares = self.scopes[-1] and bool(SCOPE.search(head))
                is_enum = bool(re.search(r'\benum\b', head))
                self.scopes.append(declares)
                self.enums.append(declares and is_enum)
                if declares:
                    if not is_enum:
                        self.heading = ''
                    self.group = None
                    self.statement = ''
                else:
                    self.statement += c
            elif c == '}' and self.parens == 0:
                if len(self.scopes) > 1:
                    ended = self.scopes.pop()
                    self.enums.pop()
                    if ended:
                        self.heading = ''
                        self.statement = '}'
                    elif self.scopes[-1]:
                        # Of a function; an initialiser goes on to its semicolon.
                        head = self.statement.split('{')[0]
                        is_body = '(' in head or not head.strip()
                        self.statement = '' if is_body else self.statement + c
                self.group = self.group if self.scopes[-1] else None
            elif c == ';' and self.parens == 0:
                if self.scopes[-1]:
                    self.statement = ''
            elif c == ',' and self.enums[-1] and self.parens == 0:
                self.statement = ''
            else:
                if c == '(':
                    self.parens += 1
                elif c == ')':
                    self.parens -= 1
                if self.scopes[-1] or self.statement:
                    self.statement += c
        # The brace that ends a namespace has no semicolon.
        if self.statement.strip() == '}':
            self.statement = ''
        elif self.statement.strip():
            self.statement += ' '
        else:
            self.statement = ''


def main():
    with open(sys.argv[1], encoding='utf-8') as header:
        lines = header.read().split('\n')
    print('\n'.join(Filter(lines).run()))


main()

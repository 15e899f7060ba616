#!/usr/bin/env python3
"""What the program can say to its user.

  messages.py list           every message: source, title, text
  messages.py unshown FILE   the boxes that no scenario has shown; FILE holds "title TAB text" lines
  messages.py guide          compares with the tables of the user guide; fails when they differ

A message is read where its words stand; "%1" in it stands for anything. A call that only hands on words from elsewhere must
be named in HANDED_ON: any other call without words fails, so that no message stays unread. What the embedded engine says in
English about a statement is not counted.
"""
import re
import subprocess
import sys
from pathlib import Path

GUIDE = 'docs/使用手冊.md'
# In place of a title: what stands in the status bar, in a cell's tip or at the foot of the launchpad; a database error, which
# comes under the title of what failed; a part of a message that stands elsewhere.
STATUS, DATABASE, PART = '(狀態列)', '(各種標題)', '(一部分)'
# In place of a text: any database error.
ANY_ERROR = '(資料庫的說明)'

# What opens the words of a message, where its title is, where its text is, and whether words must be there. A number is the
# place of an argument.
SOURCES = [(re.compile(opening), title, text, sure) for opening, title, text, sure in [
    (r'messages\.(?:inform|warn|stop|ask)\(', 0, 1, True),
    (r'\bRefusal\(', 0, 1, True),
    (r'\bFinding\{', 0, 1, True),
    (r'\bshowFinding\(\{', 0, 1, True),
    (r'\bguarded\(', 1, ANY_ERROR, True),
    (r'(?:messages\.notice|\bshowNotice|\btell)\(', STATUS, 0, True),
    (r'\bmarkCell\(', STATUS, 3, True),
    (r'\b(?:databaseNotice|QString told) =', STATUS, 0, True),
    (r'\bDatabaseError\(|\{(?=DatabaseError::)', DATABASE, 1, True),
    (r'\bthrowMisuse\(', DATABASE, 0, True),
    (r'\brefuse\(|\bpairs\.fault = ', DATABASE, 0, False),
    (r'\bPickSpec spec\{', 2, ANY_ERROR, True),
    (r'\bNumberSeries \w+\(\) \{[^{]*return \{', 6, ANY_ERROR, True),
    (r'\bRefusedText\w* = QStringLiteral\(', '提示', 0, True),
    (r'\balreadyApproved = QStringLiteral\(', '提示', 0, True),
    (r'\b(?:quickFindUnknown|alreadyApproved) = (?!QStringLiteral)', '提示', 0, True),
    (r'\bmissing\(', '提示', 1, True),
    (r'\brunSave\(', '儲存錯誤', 1, True),
    (r'\bfinishSave\(', '資料更新', 2, True),
    (r'\breturn finding\(', PART, 0, True),
    (r'\brefuseKey\(', PART, 1, True),
    (r'\btold \+= ', PART, 0, False),
]]
HANDED_ON = {
    'guard.h': ['title', 'refusal.title', 'refusal.text'],
    'connection_string.cpp': ['text'],
    'recordset_state.cpp': ['text'],
    'base_screen.cpp': ['RefusedTitle', 'text', 'refusalText()', 'session.databaseNotice'],
    'document_screen.cpp': ['finding.title', 'finding.text', 'refusal.title', 'refusal.text', 'text', 'editText',
                            'document.quickFindUnknown', 'words.alreadyApproved'],
    'document_numbers.cpp': ['series.errorTitle'],
    'pick_window.cpp': ['spec.errorTitle'],
    'formula_screen.cpp': ['text', 'text.arg(row)'],
    'launchpad_window.cpp': ['told'],
    'purchase_order_lines_screen.cpp': ['QString()', ''],
}

LITERAL = re.compile(r'"((?:[^"\\]|\\.)*)"')
COMMENT = re.compile(r'("(?:[^"\\]|\\.)*")|//[^\n]*|/\*.*?\*/', re.S)
HAN = re.compile(r'[一-鿿]')


def arguments(source, at):
    """The expressions from `at` to the end of the brackets or of the statement."""
    found, start, depth = [], at, 0
    while True:
        literal = LITERAL.match(source, at)
        if literal:
            at = literal.end()
            continue
        if depth == 0 and source[at] in ',;)}':
            found.append(source[start:at].strip())
            start = at + 1
            if source[at] != ',':
                return found
        depth += (source[at] in '([{') - (source[at] in ')]}')
        at += 1


def words(expression):
    """The texts that an expression may become; what `arg` puts into them is not theirs."""
    if re.search(r'error\.text$|^failed\.join', expression):
        return [ANY_ERROR]
    while (call := expression.find('.arg(')) >= 0:
        inside = ','.join(arguments(expression, call + 5))
        expression = expression[:call] + expression[expression.index(')', call + 5 + len(inside)) + 1:]
    joined = re.sub(r'"\s*u?"', '', expression)
    return [text for text in LITERAL.findall(joined) if HAN.search(text)]


def read(name, source, found, unread):
    for opening, title, text, sure in SOURCES:
        for call in opening.finditer(source):
            given = arguments(source, call.end())
            places = [place for place in (title, text) if isinstance(place, int)]
            # Its own declaration, or a call with fewer words.
            if any(place >= len(given) or re.match(r'(?:const )?QString&? \w', given[place]) for place in places):
                continue
            said = {place: words(given[place]) for place in places}
            for place in places:
                if sure and not said[place] and given[place] not in HANDED_ON.get(Path(name).name, []):
                    unread.append(f'{name}: {call.group()}{given[place]}')
            found.update((name, t, x) for t in said.get(title, [title]) for x in said.get(text, [text]))


def declared():
    """(source, title, text) of every message."""
    found, unread = set(), []
    listed = subprocess.run(['git', 'ls-files', '-z', 'src/*.cpp', 'src/*.h'], capture_output=True, text=True, check=True)
    for name in listed.stdout.split('\0'):
        if name and not name.startswith(('src/dbtool/', 'src/robot/', 'src/data/dialect/')):
            text = COMMENT.sub(lambda match: match.group(1) or ' ', Path(name).read_text(encoding='utf-8'))
            read(name, text, found, unread)
    if unread:
        sys.exit('calls whose words are not understood:\n  ' + '\n  '.join(unread))
    return sorted(found)


def pattern(text):
    return re.compile(re.sub(r'%\d', '.*', re.escape(text).replace(r'\%', '%')), re.S)


def unshown(file):
    lines = Path(file).read_text(encoding='utf-8').splitlines()
    shown = [line.split('\t', 1) for line in lines if '\t' in line]
    missing = [f'  {name}: [{title}] {text}' for name, title, text in declared()
               if title not in (STATUS, DATABASE, PART) and not any(
                   pattern(title).fullmatch(t) and (text == ANY_ERROR or pattern(text).fullmatch(x)) for t, x in shown)]
    print(f'messages that no scenario has shown: {len(missing)}')
    print('\n'.join(missing))


def guide_rows():
    """(title, text) of every row of the guide's message tables; a cell may hold several, one under the other."""
    inside = False
    for line in Path(GUIDE).read_text(encoding='utf-8').splitlines():
        cells = [cell.strip() for cell in line.strip('|').split('|')]
        if cells[:2] == ['標題', '訊息']:
            inside = True
        elif not line.startswith('|'):
            inside = False
        elif inside and not set(line) <= set('|- '):
            yield from ((title, text) for title in cells[0].split('<br>') for text in cells[1].split('<br>'))


def guide():
    rows, messages = sorted(set(guide_rows())), declared()

    def tells(row, title, text):
        if title == PART:
            return pattern(text).search(row[1])
        return pattern(title).fullmatch(row[0]) and pattern(text).fullmatch(row[1])
    faults = [f'not in the guide: {name}: [{title}] {text}' for name, title, text in messages
              if not any(tells(row, title, text) for row in rows)]
    # The parts of a line in the status bar follow its beginning.
    faults += [f'in the guide alone: [{row[0]}] {row[1]}' for row in rows
               if not any(tells(row, title, text) or title == STATUS == row[0] and pattern(text).match(row[1])
                          for _, title, text in messages)]
    print('\n'.join(faults) or f'the guide tells {len({message[1:] for message in messages})} messages')
    sys.exit(1 if faults else 0)


def main():
    match sys.argv[1:]:
        case ['list']:
            for message in declared():
                print('\t'.join(message))
        case ['unshown', file]:
            unshown(file)
        case ['guide']:
            guide()
        case _:
            sys.exit(__doc__)


main()

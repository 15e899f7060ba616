#!/usr/bin/env python3
"""Lists the messages in the sources that no scenario has shown: unshown_messages.py FILE

FILE holds "title TAB text" lines. A message is a call of the message channel, a refusal or a finding, with its title and
text as literals; "%1" in a text stands for anything. A title alone (the guard's) stands for any database error.
"""
import re
import subprocess
import sys

LITERAL = r'u"((?:[^"\\]|\\.)*)"(?:_s)?'
CALLS = [
    re.compile(r'(?:inform|warn|stop|ask)\(\s*' + LITERAL + r'\s*,\s*' + LITERAL),
    re.compile(r'Refusal\(\s*' + LITERAL + r'\s*,\s*' + LITERAL),
    re.compile(r'Finding\{\s*' + LITERAL + r'\s*,\s*' + LITERAL),
    re.compile(r'showFinding\(\{\s*' + LITERAL + r'\s*,\s*' + LITERAL),
]


def declared():
    files = subprocess.run(['git', 'ls-files', 'src/*.cpp', 'src/*.h'], capture_output=True, text=True, check=True)
    for name in files.stdout.split():
        with open(name, encoding='utf-8') as source:
            text = source.read()
        for call in CALLS:
            for title, message in call.findall(text):
                yield name, title, message


def main():
    with open(sys.argv[1], encoding='utf-8') as lines:
        shown = {tuple(line.rstrip('\n').split('\t', 1)) for line in lines if '\t' in line}
    missing = []
    for name, title, message in sorted(set(declared())):
        pattern = re.compile(re.sub(r'%\d', '.*', re.escape(message).replace(r'\%', '%')) + r'\Z', re.S)
        if not any(t == title and pattern.match(text) for t, text in shown):
            missing.append(f'  {name}: [{title}] {message}')
    print(f'messages that no scenario has shown: {len(missing)}')
    print('\n'.join(missing))


main()
